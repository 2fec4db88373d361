// SPDX-License-Identifier: MIT
#include "app/frm_qmx.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>
#include <QStyle>
#include <algorithm>

#include "app/latest_result.h"
#include "app/menu_entries.h"
#include "app/panels.h"
#include "app/tasks_menu.h"
#include "app/windows_menu.h"
#include "grids/dropped_file.h"
#include "grids/qt_text.h"
#include "workspace/dialogs.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

constexpr int kProgressSteps = 100;
constexpr int kReadable = 3000;  // Milliseconds.
constexpr int kSlack = 2;        // Lest rounding bring up scroll bars.
constexpr double kShareOfScreen = 0.6;
constexpr int kBar = 40;       // Of the desktop, where it does not tell of it.
constexpr int kTitleBar = 30;  // What the desktop adds to the window's height, about.

}  // namespace

frmQMX::frmQMX() {
  setObjectName("frmQMX");
  setWindowTitle(ToQString(kProgramTitle));
  setAcceptDrops(true);
  BuildMenus();
  BuildPanels();
  BuildStatusBar();
  IndexControls();
  ResizeToPanels();
}

void frmQMX::ResizeToPanels() {
  const QSize available = screen()->availableSize() - QSize(0, kTitleBar);
  const QSize least = panels_->minimumSizeHint();
  const int bars = menuBar()->sizeHint().height() + statusBar()->sizeHint().height();
  QSize wanted(0, bars + kSlack + least.height());
  // Higher where the screen allows it: the latest result has the room.
  const int ample = bars + kSlack + panels_->sizeHint().height();
  wanted.setHeight(std::max(wanted.height(), std::min(ample, available.height() - kBar)));
  // As wide as all captions want it, but for what the windows of the matrices need.
  const int share = static_cast<int>(available.width() * kShareOfScreen) - kSlack;
  wanted.setWidth(std::clamp(share, least.width(), panels_->sizeHint().width()) + kSlack);
  // A scroll bar must not lead to another one.
  if (wanted.height() > available.height())
    wanted.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  resize(wanted.boundedTo(available));
}

void frmQMX::BuildPanels() {
  auto* area = new QScrollArea(this);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  panels_ = new QWidget(area);
  auto* columns = new QHBoxLayout(panels_);
  columns->setContentsMargins(4, 4, 4, 2);
  columns->setSpacing(4);
  auto* operands = new QVBoxLayout;
  operands->setSpacing(4);
  columns->addLayout(operands);
  operands->addWidget(BuildOperandPanel(kSlotA, panels_));
  operands->addWidget(BuildExchangeButton(panels_));
  operands->addWidget(BuildOperandPanel(kSlotB, panels_));
  operands->addWidget(BuildSpecialMatrixPanel(panels_));
  operands->addWidget(BuildSystemPanel(panels_));
  operands->addStretch(1);
  taskPanel_ = BuildTaskPanel(panels_);
  columns->addWidget(taskPanel_);
  columns->addWidget(BuildResultsPanel(panels_), 1);
  area->setWidget(panels_);
  setCentralWidget(area);
}

void frmQMX::BuildMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  AddEntries(file, {{"mnuOpen", "&Open...", QKeySequence(Qt::CTRL | Qt::Key_O)},
                    {"mnuSave", "&Save", QKeySequence(Qt::CTRL | Qt::Key_S)},
                    {"mnuSaveAs", "Save &As...", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)},
                    {},
                    {"mnuPrint", "&Print", QKeySequence(Qt::CTRL | Qt::Key_P)},
                    {},
                    {"mnuExit", "E&xit", QKeySequence(Qt::CTRL | Qt::Key_Q)}});
  auto* recent = new QMenu(tr("&Recent projects"), file);
  recent->setObjectName("mnuRecent");
  file->insertMenu(Action("mnuSave"), recent);
  auto* last = new QAction(tr("&Last session"), file);
  last->setObjectName("mnuLastSession");
  last->setToolTip(tr("Opens what the program held when it ended last, however it ended"));
  file->insertAction(Action("mnuSave"), last);
  file->insertSeparator(Action("mnuSave"));
  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  edit->setObjectName("mnuEdit");
  AddEntries(edit, {{"mnuUndo", "&Undo", QKeySequence(Qt::CTRL | Qt::Key_Z)},
                    {"mnuRedo", "&Redo", QKeySequence(Qt::CTRL | Qt::Key_Y)}});
  Action("mnuRedo")->setShortcuts(
      {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
  AddTasksMenu(menuBar());
  QMenu* tools = menuBar()->addMenu(tr("&Tools"));
  tools->setToolTipsVisible(true);
  AddEntries(tools, {{"mnuMoreAboutA", "&More about A", {}},
                     {},
                     {"mnuAssociate", "&Associate .qmx files with Orvane", {}}});
  AddWindowsMenu(menuBar());
  QMenu* help = menuBar()->addMenu(tr("&Help"));
  AddEntries(help, {{"mnuHelp", "&Contents", {}},
                    {"mnuWindowHelp", "&This window", QKeySequence(Qt::Key_F1)},
                    {},
                    {"mnuAbout", "&About Orvane", {}}});
}

void frmQMX::BuildStatusBar() {
  status_ = new QLabel(this);
  status_->setObjectName("lblStatus");
  status_->setTextFormat(Qt::PlainText);
  // A long text must not make the window wider.
  status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  statusBar()->addWidget(status_, 1);
  working_ = new QLabel(this);
  working_->setObjectName("lblWorking");
  progress_ = new QProgressBar(this);
  progress_->setRange(0, kProgressSteps);
  progress_->setTextVisible(false);
  progress_->setMaximumHeight(12);
  progress_->setAccessibleName(tr("Progress of the computation"));
  stop_ = new QPushButton(tr("Stop"), this);
  stop_->setObjectName("cmdStop");
  stop_->setToolTip(tr("Stops the computation (Esc); everything will be as before"));
  stop_->setFocusPolicy(Qt::NoFocus);
  connect(stop_, &QPushButton::clicked, this, &frmQMX::StopPressed);
  for (QWidget* part : {static_cast<QWidget*>(working_), static_cast<QWidget*>(progress_),
                        static_cast<QWidget*>(stop_)}) {
    statusBar()->addWidget(part);
    part->hide();
  }
}

void frmQMX::IndexControls() {
  for (QObject* control : findChildren<QObject*>()) {
    const QString name = control->objectName();
    if (!name.isEmpty()) controls_.insert_or_assign(name.toStdString(), control);
  }
  latest_ = panels_->findChild<LatestResult*>();
  for (QWidget* control : panels_->findChildren<QWidget*>()) {
    const QString name = control->objectName();
    const auto known = controls_.find(name.toStdString());
    const bool isControl =
        known != controls_.end() && known->second == control && !latest_->isAncestorOf(control);
    // What is told of results follows from them.
    const bool isTold =
        name.startsWith("lblStale") || name.startsWith("cmdSteps") || name.contains("DigitsOf");
    if (isControl && !isTold) commandControls_.append(control);
  }
  commandControls_.append(Find(mnuPrint));
}

QObject* frmQMX::Find(const Control& control) const {
  const auto known = controls_.find(control.ObjectName());
  return known == controls_.end() ? nullptr : known->second;
}

QAction* frmQMX::Action(const char* name) const { return findChild<QAction*>(name); }

void frmQMX::SetStatus(const QString& text) {
  if (!stop_->isHidden()) {
    working_->setText(text);
    sinceTold_.start();
    return;
  }
  message_ = text;
  ShowStatus();
}

void frmQMX::SetDocument(const QString& text, const QString& toolTip) {
  document_ = text;
  documentTip_ = toolTip;
  ShowStatus();
}

void frmQMX::ShowStatus() {
  const bool telling = !message_.isEmpty();
  status_->setText(telling ? message_ : document_);
  status_->setToolTip(telling ? message_ : documentTip_);
}

QRect frmQMX::TaskArea() const {
  return {taskPanel_->mapToGlobal(QPoint(0, 0)), taskPanel_->size()};
}

void frmQMX::StartProgress() {
  status_->hide();
  sinceTold_.invalidate();
  // What the command has told before it began stays long enough to be read.
  if (!message_.isEmpty()) {
    working_->setText(message_);
    sinceTold_.start();
  }
  for (QWidget* part : {static_cast<QWidget*>(working_), static_cast<QWidget*>(progress_),
                        static_cast<QWidget*>(stop_)}) {
    part->show();
  }
}

void frmQMX::ShowProgress(double fraction, const QString& text) {
  progress_->setValue(static_cast<int>(fraction * kProgressSteps));
  // What was told meanwhile stays long enough to be read.
  if (!sinceTold_.isValid() || sinceTold_.elapsed() > kReadable) working_->setText(text);
}

void frmQMX::EndProgress() {
  for (QWidget* part : {static_cast<QWidget*>(working_), static_cast<QWidget*>(progress_),
                        static_cast<QWidget*>(stop_)}) {
    part->hide();
  }
  status_->show();
}

void frmQMX::closeEvent(QCloseEvent* event) {
  event->accept();
  Q_EMIT Closed();
}

void frmQMX::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void frmQMX::dropEvent(QDropEvent* event) {
  const QString name = DroppedFile(*event);
  if (name.isEmpty()) return;
  event->acceptProposedAction();
  Q_EMIT FilesDropped(name);
}

}  // namespace qmx
