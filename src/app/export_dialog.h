// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include "exchange/foreign_file.h"

namespace qmx {

/// Asks for the form in which a matrix is exported.
class ExportDialog : public QDialog {
  Q_OBJECT

 public:
  /// `choice` is what the dialog proposes.
  ExportDialog(const QString& title, const ForeignChoice& choice, QWidget* parent);

  /// What is chosen; the name stays what it was.
  ForeignChoice Choice() const;

 private:
  QComboBox* MakeBox(const char* name);
  void Check();

  ForeignChoice proposed_;
  QComboBox* format_ = nullptr;
  QComboBox* separator_ = nullptr;
  QComboBox* decimal_ = nullptr;
  QLabel* remark_ = nullptr;
  QPushButton* export_ = nullptr;  ///< The last to be made.
};

}  // namespace qmx
