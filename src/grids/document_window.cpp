// SPDX-License-Identifier: MIT
#include "grids/document_window.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QRadioButton>
#include <QStringList>
#include <utility>

#include "derivation/document_html.h"
#include "derivation/document_latex.h"
#include "derivation/document_reading.h"
#include "derivation/document_text.h"
#include "grids/announcer.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

QLabel* MakeNote(const char* name, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->hide();
  return label;
}

bool IsPrintKey(const QKeyEvent& event) {
  return event.key() == Qt::Key_P && event.modifiers() == Qt::ControlModifier;
}

/// A key that the view takes in any case.
bool IsPageKey(const QKeyEvent& event) {
  return (event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown) &&
         (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

}  // namespace

DocumentWindow::DocumentWindow(DocumentTexts texts)
    : QWidget(nullptr, Qt::Window),
      texts_(std::move(texts)),
      view_(new DocumentView(this)),
      note_(MakeNote("lblNote", this)),
      renew_(new QPushButton(tr("&Renew"), this)),
      state_(MakeNote("lblState", this)),
      legend_(MakeNote("lblLegend", this)) {
  setObjectName(texts_.name);
  setWindowTitle(texts_.title);
  setAttribute(Qt::WA_DeleteOnClose);
  view_->setObjectName("docSteps");
  view_->setAccessibleName(texts_.title);
  renew_->setObjectName("cmdRenew");
  renew_->setToolTip(texts_.renew);
  renew_->setAutoDefault(true);  // Enter presses it, as Space does.
  renew_->hide();
  state_->setAlignment(Qt::AlignCenter);
  state_->setFocusPolicy(Qt::StrongFocus);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  auto* noteLine = new QHBoxLayout;
  noteLine->addWidget(note_, 1);
  noteLine->addWidget(renew_);
  layout->addLayout(noteLine);
  layout->addWidget(state_, 1);
  layout->addWidget(view_, 1);
  layout->addWidget(legend_);
  auto* lower = new QHBoxLayout;
  AddForms(lower);
  lower->addStretch(1);
  AddOutputs(lower);
  layout->addLayout(lower);
  connect(renew_, &QPushButton::clicked, this, &DocumentWindow::RenewAsked);
  connect(view_, &DocumentView::CopyRequested, this, qOverload<>(&DocumentWindow::Copy));
  connect(view_, &DocumentView::MenuRequested, this, &DocumentWindow::ShowMenu);
  view_->setFocus();
  EnableOutput(false);
}

void DocumentWindow::AddForms(QLayout* row) {
  struct Form {
    const char* name;
    QString text;
    QString toolTip;
  };
  const std::array<Form, 3> forms{
      {{"optFractions", tr("&Fractions"), tr("Shows exact fractions, where they are known")},
       {"optDecimals", tr("&Decimals"), tr("Shows the numbers as the program computed them")},
       {"optBoth", tr("&Both"), tr("Shows the exact fractions and the computed decimals")}}};
  for (std::size_t k = 0; k < forms.size(); ++k) {
    auto* option = new QRadioButton(forms[k].text, this);
    option->setObjectName(forms[k].name);
    option->setToolTip(forms[k].toolTip);
    row->addWidget(option);
    forms_[k] = option;
    connect(option, &QRadioButton::clicked, this, [this, form = static_cast<NumberForm>(k)] {
      SetForm(form);
      Q_EMIT FormChosen(form);
    });
  }
  forms_.front()->setChecked(true);
}

QPushButton* DocumentWindow::AddButton(QLayout* row, const char* name, const QString& text,
                                       const QString& toolTip) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  button->setToolTip(toolTip);
  button->setAutoDefault(true);  // Enter presses it, as Space does.
  row->addWidget(button);
  outputs_ << button;
  return button;
}

void DocumentWindow::AddOutputs(QLayout* row) {
  auto* copy = AddButton(row, "cmdCopySteps", tr("&Copy as"),
                         tr("Copies what is selected, or all, as text, LaTeX or HTML"));
  copy->setMenu(MakeCopyMenu());
  auto* print = AddButton(row, "cmdPrintSteps", tr("&Print..."),
                          tr("Shows the document on pages, and prints it (Ctrl+P)"));
  auto* pdf =
      AddButton(row, "cmdPdfSteps", tr("&Save PDF..."), tr("Saves the document as a PDF file"));
  connect(print, &QPushButton::clicked, this, &DocumentWindow::PrintAsked);
  connect(pdf, &QPushButton::clicked, this, &DocumentWindow::PdfAsked);
}

QMenu* DocumentWindow::MakeCopyMenu() {
  struct Entry {
    const char* name;
    QString text;
    CopyAs form;
  };
  auto* menu = new QMenu(tr("&Copy as"), this);
  menu->setObjectName("mnuCopySteps");
  for (const Entry& entry : {Entry{"mnuCopyText", tr("&Text"), CopyAs::kText},
                             Entry{"mnuCopyLatex", tr("&LaTeX"), CopyAs::kLatex},
                             Entry{"mnuCopyHtml", tr("&HTML"), CopyAs::kHtml}}) {
    QAction* action = menu->addAction(entry.text);
    action->setObjectName(entry.name);
    connect(action, &QAction::triggered, this, [this, form = entry.form] { Copy(form); });
  }
  return menu;
}

void DocumentWindow::ShowMenu(const QPoint& where) {
  auto* menu = new QMenu(this);
  menu->setObjectName("mnuDocument");
  menu->setAttribute(Qt::WA_DeleteOnClose);
  QAction* copy = menu->addAction(tr("&Copy"), this, qOverload<>(&DocumentWindow::Copy));
  copy->setShortcut(QKeySequence::Copy);
  QMenu* copyAs = MakeCopyMenu();
  copyAs->setParent(menu, copyAs->windowFlags());
  menu->addMenu(copyAs);
  menu->addSeparator();
  QAction* all = menu->addAction(tr("Select &all"), view_, &DocumentView::SelectAll);
  all->setShortcut(QKeySequence::SelectAll);
  for (QAction* action : {copy, all}) {
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setShortcutVisibleInContextMenu(true);
    action->setEnabled(view_->Shown() != nullptr);
  }
  copyAs->setEnabled(view_->Shown() != nullptr);
  menu->popup(where);
}

void DocumentWindow::EnableOutput(bool enabled) {
  for (QPushButton* button : outputs_) button->setEnabled(enabled);
}

void DocumentWindow::ShowState(const QString& state) {
  view_->Show(nullptr);
  state_->setText(state);
  state_->show();
  // The keyboard must not fall on the forms of numbers, which its arrows would change.
  if (focusWidget() == nullptr || focusWidget() == view_ || focusWidget() == renew_)
    state_->setFocus();
  view_->hide();
  legend_->hide();
  EnableOutput(false);
  if (isVisible()) Announce(*this, state);
}

void DocumentWindow::ShowWorking() { ShowState(texts_.working); }

void DocumentWindow::ShowNoMemory() { ShowState(texts_.noMemory); }

void DocumentWindow::ShowDocument(std::shared_ptr<const Document> document) {
  if (document->blocks.empty()) return ShowState(texts_.none);
  const bool hadKeyboard = focusWidget() == state_;
  state_->hide();
  view_->show();
  view_->Show(std::move(document));
  EnableOutput(true);
  ShowLegend();
  const QWidget* focus = focusWidget();
  if (hadKeyboard || focus == nullptr || focus == this || !focus->isVisible()) view_->setFocus();
  if (isVisible()) Announce(*this, texts_.done);
}

void DocumentWindow::ShowLegend() {
  const MarksInUse marks =
      view_->Shown() == nullptr ? MarksInUse{} : MarksOf(*view_->Shown(), view_->Form());
  QStringList told;
  if (marks.pivot) told << tr("framed: the pivot");
  if (marks.changed) told << tr("shaded, with %1: changed by the step").arg(QChar(0x25c0));
  if (marks.found) told << tr("bold: part of the result");
  if (marks.asked) told << tr("underlined: the element asked about");
  if (marks.unproved) told << tr("grey digits: lost by rounding");
  QString text = told.join("; ");
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  legend_->setText(text);
  legend_->setVisible(!text.isEmpty());
}

void DocumentWindow::ShowNote(const QString& note, bool canBeRenewed) {
  const bool isNew = note != note_->text();
  note_->setText(note);
  note_->setVisible(!note.isEmpty());
  const bool isRenewable = !note.isEmpty() && canBeRenewed;
  if (!isRenewable && focusWidget() == renew_) view_->setFocus();
  renew_->setVisible(isRenewable);
  if (isNew && !note.isEmpty() && isActiveWindow()) Announce(*this, note);
}

void DocumentWindow::SetForm(NumberForm form) {
  forms_[static_cast<std::size_t>(form)]->setChecked(true);
  view_->SetForm(form);
  ShowLegend();
}

bool DocumentWindow::event(QEvent* event) {
  // Elsewhere this key prints the report of the results.
  if (event->type() == QEvent::ShortcutOverride && IsPrintKey(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void DocumentWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else if (IsPrintKey(*event) && view_->Shown() != nullptr) {
    Q_EMIT PrintAsked();
  } else if (IsPageKey(*event) && !view_->hasFocus()) {
    // At the buttons: who has chosen the form reads on.
    QCoreApplication::sendEvent(view_, event);
  } else {
    QWidget::keyPressEvent(event);
  }
}

void DocumentWindow::Copy() {
  if (view_->Shown() == nullptr) return;
  const Document part = view_->Selected();
  auto* copied = new QMimeData;
  copied->setText(ToQString(PlainText(part, view_->Form())));
  copied->setHtml(ToQString(HtmlText(part, view_->Form())));
  QApplication::clipboard()->setMimeData(copied);
}

void DocumentWindow::Copy(CopyAs form) {
  if (view_->Shown() == nullptr) return;
  const Document part = view_->Selected();
  const auto write = form == CopyAs::kText    ? PlainText
                     : form == CopyAs::kLatex ? LatexText
                                              : HtmlText;
  QApplication::clipboard()->setText(ToQString(write(part, view_->Form())));
}

}  // namespace qmx
