// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidget>
#include <QWidget>

namespace qmx {

/// The running log of reports, `frmResults`. Its close box only hides it.
class ResultsWindow : public QWidget {
  Q_OBJECT

 public:
  ResultsWindow();

  /// Puts the list into the fixed-pitch font that its columns need.
  void UseReportFont();
  int LineCount() const { return list_->count(); }
  /// Takes away the lines after the first ones.
  void CutTo(int lines);
  void AddLine(const QString& line);
  void Clear();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void CopySelected();

  QListWidget* list_;
};

}  // namespace qmx
