// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <string>
#include <vector>

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
  /// Adds lines at the end, which is in view at the next turn of the event loop.
  void AddLines(const QStringList& lines);
  void Clear();
  /// All lines, in UTF-8.
  std::vector<std::string> Lines() const;

 Q_SIGNALS:
  /// The list is to be saved as text, or printed.
  void SaveRequested();
  void PrintRequested();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QPushButton* AddButton(const char* name, const QString& text, const QString& toolTip);
  void AddEntries();
  QAction* AddEntry(const char* name, const QString& text, const QKeySequence& key = {});
  void ShowMenu(const QPoint& where);
  void CopySelected();
  /// There is something to save, to print and to copy only in a list that has lines.
  void Update();

  QListWidget* list_;
  QTimer scroll_;  ///< To the end, once for whatever was added meanwhile.
  QHBoxLayout* buttons_;
  std::vector<QPushButton*> whole_;  ///< The buttons for the whole list.
  QAction* copy_ = nullptr;
  QAction* selectAll_ = nullptr;
  QAction* save_ = nullptr;
  QAction* print_ = nullptr;
};

}  // namespace qmx
