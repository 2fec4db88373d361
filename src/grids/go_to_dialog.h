// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>

#include "grids/grid_selection.h"

namespace qmx {

/// Asks for the row and column of a cell to go to. A number outside the matrix is refused, in
/// words, and the dialog stays. It deletes itself when it is closed.
class GoToDialog : public QDialog {
  Q_OBJECT

 public:
  /// `current`, counted from 1, is what the fields propose.
  GoToDialog(int rows, int cols, GridCell current, QWidget* parent);

  void accept() override;

 Q_SIGNALS:
  /// The cell to go to, counted from 1.
  void Chosen(GridCell cell);

 private:
  QLineEdit* AddField(const char* name, const QString& label, int proposed, int most);
  /// The number in a field; 0 after a refusal.
  int Read(QLineEdit* field, const QString& what, int most);

  int rows_;
  int cols_;
  QLineEdit* row_;
  QLineEdit* col_;
  QLabel* refusal_;
};

}  // namespace qmx
