// SPDX-License-Identifier: MIT
#include "app/program.h"

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <cstdlib>
#include <memory>
#include <new>

#include "app/wiring.h"
#include "app/zoom_menu.h"
#include "base/fault.h"
#include "commands/computed_news.h"
#include "commands/file_commands.h"
#include "commands/parameters.h"
#include "desktop/file_store_system.h"
#include "files/project_file.h"
#include "grids/announcer.h"
#include "grids/qt_text.h"

namespace qmx {

Program::Program(const SystemPorts& ports, RegionalSettings& settings, const Prover* prover,
                 const Deriver* deriver)
    : screen_(window_, commands_),
      context_(workspace_, screen_, ports),
      commands_(context_, [this](Fault fault) { EndAfterFault(fault); }),
      pictures_(workspace_,
                [this](QWidget& picture, Slot slot) { screen_.PlaceIfNew(picture, slot); }),
      guard_(settings),
      desktop_(window_, screen_),
      exchange_(window_, screen_, commands_),
      recent_(window_.findChild<QMenu*>("mnuRecent"),
              [this](const QString& name) { OpenByName(commands_, name.toStdString()); }),
      stateFiles_(MakeSystemFileStore()),
      session_(
          StateFolder(), *stateFiles_, [this] { return CaptureSession(); },
          [this](const std::string& problem) {
            screen_.SetStatus("The session cannot be kept for the next start. " + problem);
          }),
      digits_(workspace_, window_, screen_, commands_, prover),
      fractions_(workspace_, screen_, commands_, deriver),
      steps_(workspace_, window_, screen_, commands_, deriver,
             [this](DocumentWindow& window, std::optional<Slot> slot) {
               zoom_.Attach(window, window.View());
               screen_.PlaceIfNew(window, slot);
             }),
      moreAboutA_(workspace_, window_, commands_, deriver, [this](DocumentWindow& window) {
        zoom_.Attach(window, window.View());
        screen_.PlaceIfNew(window, kSlotA);
      }) {
  WireMainWindow(window_, screen_, commands_);
  AddZoomMenu(window_, zoom_);
  zoom_.Attach(window_, *window_.findChild<MatrixGrid*>("grdLatest"));
  screen_.WhenMade([this](QWidget& window) { Furnish(window); });
  QObject::connect(&window_, &frmQMX::Closed, &window_, [this] { End(); });
}

bool Program::Start(const std::string& commandLine) {
  // In the corner, so that the windows of the matrices find room beside it. Before any
  // box: what a box belongs to gets its place from the desktop otherwise.
  if (!screen_.Memory().Recall(window_)) {
    window_.move(window_.screen()->availableGeometry().topLeft());
    screen_.Memory().Watch(window_);
  }
  if (!guard_.Check(screen_)) return false;
  // The end of the user's session may close the program without its window.
  QObject::connect(qApp, &QCoreApplication::aboutToQuit, &window_, [this] {
    guard_.Restore();
    session_.End();
  });
  SetStartState(context_);
  commands_.SetListener([this] { AfterCommand(); });
  QObject::connect(window_.Action("mnuLastSession"), &QAction::triggered, &window_,
                   [this] { OpenLastSession(); });
  AfterCommand();
  window_.show();
  // Until the desktop gives the window the keyboard, no control has it: a project that is opened
  // now must know where it belongs.
  qobject_cast<QWidget*>(window_.Find(txtRowsA))->setFocus();
  if (!commandLine.empty()) OpenByName(commands_, commandLine);
  if (session_.WasCutOff() && commandLine.empty())
    screen_.SetStatus("The last session was cut off. File > Last session brings it back.");
  return true;
}

void Program::Furnish(QWidget& window) {
  if (auto* matrix = qobject_cast<GridWindow*>(&window)) {
    fractions_.Attach(*matrix);
    steps_.Attach(*matrix);
    pictures_.Attach(*matrix);
    matrix->AddViewEntries(zoom_.Entries());
    zoom_.Attach(window, matrix->Grid());
  } else if (auto* list = window.findChild<QListWidget*>()) {
    zoom_.Attach(window, *list);
  }
}

LastSession::Compose Program::CaptureSession() const {
  if (commands_.IsBusy()) return {};
  // The copy shares the elements of all matrices.
  return [workspace = std::make_shared<const Workspace>(workspace_),
          texts = ReadEigenTexts(screen_)] { return ProjectFile(*workspace, texts); };
}

void Program::OpenLastSession() {
  commands_.Step("Last session", [this](Context& context) {
    if (!OpenKeptProject(context, session_.Latest())) session_.Refuse();
  });
}

void Program::AfterCommand() {
  const CommandRunner::Mark present = commands_.PresentMark();
  if (present != kept_ || commands_.HasOpenCell()) session_.Changed();
  kept_ = present;
  window_.Action("mnuLastSession")->setEnabled(!session_.Latest().empty());
  ShowWhatStandsWhere(window_, commands_, workspace_);
  screen_.ShowLatest();
  MarkStaleResults(window_, screen_, workspace_);
  exchange_.Update(workspace_);
  AnnounceComputed();
  pictures_.Refresh();
  digits_.AfterCommand();
  fractions_.AfterCommand();
  steps_.AfterCommand();
  moreAboutA_.AfterCommand();
  if (commands_.WasSaved()) recent_.Add(ToQString(workspace_.currentFileName));
}

/// Results open without the keyboard: who does not see them hears of them.
void Program::AnnounceComputed() {
  const std::string news = ComputedNews(workspace_);
  if (news.empty()) return;
  QWidget* active = QApplication::activeWindow();
  Announce(active != nullptr ? *active : window_, QString::fromStdString(news));
}

void Program::End() {
  guard_.Restore();
  digits_.End();
  session_.End();
  screen_.Memory().Keep(window_);
  pictures_.CloseAll();
  fractions_.End();
  steps_.CloseAll();
  moreAboutA_.Close();
  screen_.CloseAllWindows();
  desktop_.CloseWindows();
  QCoreApplication::exit(EXIT_SUCCESS);
}

void Program::OfferToSave(Fault fault) {
  QMessageBox box(QMessageBox::Critical, ToQString(kProgramTitle),
                  QString::fromStdString(FaultMessage(fault)),
                  QMessageBox::Save | QMessageBox::Discard);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(QObject::tr("The program must end. Save the project first?"));
  box.setDefaultButton(QMessageBox::Save);
  // What could not be saved is offered again: perhaps another place takes it.
  while (box.exec() == QMessageBox::Save && !SaveProjectAfterFault(context_)) {
  }
}

void Program::EndAfterFault(Fault fault) {
  static bool isEnding = false;
  while (QApplication::overrideCursor() != nullptr) QApplication::restoreOverrideCursor();
  // A second fault, met while the first is told, ends the program at once.
  if (!isEnding) {
    isEnding = true;
    try {
      OfferToSave(fault);
    } catch (const RuntimeFault&) {
    } catch (const std::bad_alloc&) {
    }
  }
  try {
    session_.End();
  } catch (...) {
    // What was kept before stays.
  }
  guard_.Restore();
  // The loops that are under way belong to commands that must not go on: leave without unwinding.
  std::_Exit(EXIT_FAILURE);
}

}  // namespace qmx
