// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QList>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <string>
#include <unordered_map>

#include "workspace/controls.h"

namespace qmx {

class LatestResult;

/// The main window: all controls and menus, under the names that the tables give them. It shows and
/// passes on; what a press means is wired to it from outside.
class frmQMX : public QMainWindow {
  Q_OBJECT

 public:
  frmQMX();

  /// The control or menu entry with this name; null where there is none.
  QObject* Find(const Control& control) const;
  QAction* Action(const char* name) const;
  LatestResult* Latest() const { return latest_; }
  /// What holds all controls but those of menus and status bar.
  const QWidget* Panels() const { return panels_; }
  /// The controls whose texts and states commands change.
  const QList<QObject*>& CommandControls() const { return commandControls_; }

  /// Tells something in the status bar, in place of the project's file, until it is emptied.
  void SetStatus(const QString& text);
  /// What the status bar tells of the project's file.
  void SetDocument(const QString& text, const QString& toolTip);
  /// The part of the screen that windows of matrices should leave free.
  QRect TaskArea() const;

  void StartProgress();
  void ShowProgress(double fraction, const QString& text);
  void EndProgress();

 Q_SIGNALS:
  /// The user wants the computation to stop.
  void StopPressed();
  void FilesDropped(const QString& firstName);
  /// The window was closed, and with it the program.
  void Closed();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void BuildPanels();
  void BuildMenus();
  void BuildStatusBar();
  void ShowStatus();
  void IndexControls();
  void ResizeToPanels();

  std::unordered_map<std::string, QObject*> controls_;
  QList<QObject*> commandControls_;
  QWidget* panels_ = nullptr;
  LatestResult* latest_ = nullptr;
  QWidget* taskPanel_ = nullptr;
  QLabel* status_ = nullptr;
  QString message_;
  QString document_;
  QString documentTip_;
  QLabel* working_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QPushButton* stop_ = nullptr;
  QElapsedTimer sinceTold_;  ///< Since something was told in a computation.
};

}  // namespace qmx
