// SPDX-License-Identifier: MIT
#include "grids/digits_line.h"

#include <QHBoxLayout>
#include <utility>

#include "grids/announcer.h"

namespace qmx {

DigitsLine::DigitsLine(QWidget* parent)
    : QWidget(parent), text_(new QLabel(this)), check_(new QPushButton(this)) {
  text_->setObjectName("lblDigits");
  text_->setTextFormat(Qt::PlainText);
  // In a narrow window the text takes two lines.
  text_->setWordWrap(true);
  check_->setObjectName("cmdCheckDigits");
  check_->setAutoDefault(true);  // Enter presses it, as Space does.
  check_->hide();
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(text_, 1);
  row->addWidget(check_);
  connect(check_, &QPushButton::clicked, this, [this] { Q_EMIT Asked(!isChecking_); });
  hide();
}

bool DigitsLine::Show(const ShownDigits& digits) {
  const bool hasButton = digits.offersCheck || digits.isChecking;
  const bool isSame = digits.line == text_->text() && hasButton != check_->isHidden() &&
                      isHidden() == digits.line.isEmpty();
  const bool wasChecking = std::exchange(isChecking_, digits.isChecking);
  check_->setText(isChecking_ ? tr("&Stop checking") : tr("Check &digits"));
  check_->setToolTip(isChecking_ ? tr("Stops the check of the digits (Esc)")
                                 : tr("Proves how many digits hold, however long that takes; "
                                      "everything else can go on meanwhile"));
  if (isSame) return false;
  text_->setText(digits.line);
  check_->setVisible(hasButton);
  setVisible(!digits.line.isEmpty());
  // The window asks for sizes before the layouts have heard of this by themselves.
  updateGeometry();
  // Heard where it is waited for: in the window that is worked in, or after a check was asked for.
  if (isVisible() && (isActiveWindow() || wasChecking)) Announce(*this, digits.line);
  return true;
}

}  // namespace qmx
