// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <memory>

#include "grids/document_view.h"

class QAbstractButton;

namespace qmx {

/// What a window of a document is called, and what it says beside the document.
struct DocumentTexts {
  QString name;  ///< By which the program and its help know it.
  QString title;
  QString renew;    ///< What making it anew shows.
  QString working;  ///< While the document is being made,
  QString done;     ///< once it is there,
  QString none;     ///< where it has nothing to tell,
  QString noMemory;
  QString notPrinted;  ///< and where the printer has failed.
};

/// A window with a document: whether its numbers are fractions, decimals or both is one press; it
/// is copied in several forms, printed and saved as PDF. While the document is being made the
/// window says so, and closing it ends that.
class DocumentWindow : public QWidget {
  Q_OBJECT

 public:
  explicit DocumentWindow(DocumentTexts texts);

  DocumentView& View() { return *view_; }
  const DocumentTexts& Texts() const { return texts_; }

  /// The document is being made.
  void ShowWorking();
  /// A document without blocks counts as none.
  void ShowDocument(std::shared_ptr<const Document> document);
  /// There was not enough memory for the document.
  void ShowNoMemory();
  /// Tells above the document what has become of its subject; nothing where all is as it was. It
  /// can be made anew where that makes sense.
  void ShowNote(const QString& note, bool canBeRenewed);
  void SetForm(NumberForm form);

 Q_SIGNALS:
  void FormChosen(NumberForm form);
  void RenewAsked();
  void PrintAsked();
  void PdfAsked();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  enum class CopyAs { kText, kLatex, kHtml };

  void AddForms(QLayout* row);
  void AddOutputs(QLayout* row);
  QPushButton* AddButton(QLayout* row, const char* name, const QString& text,
                         const QString& toolTip);
  QMenu* MakeCopyMenu();
  void ShowMenu(const QPoint& where);
  void EnableOutput(bool enabled);
  /// In place of a document.
  void ShowState(const QString& state);
  void ShowLegend();
  /// What is selected, else all.
  void Copy();
  void Copy(CopyAs form);

  const DocumentTexts texts_;
  DocumentView* view_;
  QLabel* note_;
  QPushButton* renew_;
  QLabel* state_;   ///< In place of a document.
  QLabel* legend_;  ///< What the marks mean.
  std::array<QAbstractButton*, 3> forms_{};
  QList<QPushButton*> outputs_;
};

}  // namespace qmx
