// SPDX-License-Identifier: MIT
#include "app/scalar_proof.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

#include "grids/digit_runs.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

QString NameOf(Result result) {
  switch (result) {
    case kResultDeterminant:
      return "Determinant";
    case kResultTrace:
      return "Trace";
    case kResultDefiniteness:
      return "Definiteness";
    default:
      return "Symmetry";
  }
}

}  // namespace

GreyDigits::GreyDigits(QLabel* label) : QWidget(label), label_(label) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  label->installEventFilter(this);
  hide();
}

void GreyDigits::ShowHeld(int held) {
  held_ = held;
  const std::vector<DigitRun> runs = DigitRuns(label_->text(), held);
  setVisible(!runs.empty() && (runs.size() > 1 || !runs.front().isProved));
  setGeometry(label_->rect());
  update();
}

bool GreyDigits::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) setGeometry(label_->rect());
  // A selection that comes or goes paints the label anew, and this with it.
  return QWidget::eventFilter(watched, event);
}

void GreyDigits::paintEvent(QPaintEvent*) {
  if (label_->hasSelectedText()) return;
  QPainter painter(this);
  const QColor ground = palette().color(QPalette::Window);
  const QColor text = palette().color(QPalette::WindowText);
  const QRect room = label_->contentsRect();
  painter.fillRect(rect(), ground);
  for (const DigitRun& run : DigitRuns(label_->text(), held_)) {
    const int left = fontMetrics().horizontalAdvance(label_->text().left(run.start));
    painter.setPen(run.isProved ? text : UnprovedColour(text, ground));
    painter.drawText(room.adjusted(left, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     label_->text().mid(run.start, run.length));
  }
}

ScalarProof::ScalarProof(Result result, QLabel* value, QWidget* parent)
    : QWidget(parent),
      result_(result),
      value_(value),
      text_(new QLabel(this)),
      check_(new QPushButton(tr("Check"), this)) {
  text_->setObjectName("lblDigitsOf" + NameOf(result));
  text_->setTextFormat(Qt::PlainText);
  check_->setObjectName("cmdCheckDigitsOf" + NameOf(result));
  check_->setFlat(true);
  check_->setAutoDefault(true);  // Enter presses it, as Space does.
  check_->setMaximumHeight(text_->fontMetrics().height() + 4);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2);
  // The number comes first: what is told of it has the room that is left.
  text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  text_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  row->addWidget(text_, 1);
  row->addWidget(check_);
  connect(check_, &QPushButton::clicked, this, [this] { Q_EMIT Asked(!isChecking_); });
  if (InfoOf(result).number != nullptr) grey_ = new GreyDigits(value);
  hide();
}

void ScalarProof::Show(const ScalarDigits& digits, bool offersCheck, bool isChecking) {
  isChecking_ = isChecking;
  const QString tip = ToQString(digits.toolTip);
  text_->setText(ToQString(digits.text));
  text_->setToolTip(tip);
  text_->setAccessibleName(QString(tip).replace('\n', ". "));
  text_->setVisible(!offersCheck && !isChecking);
  check_->setText(isChecking ? tr("Stop") : tr("Check"));
  check_->setToolTip(tip);
  check_->setAccessibleName((isChecking ? tr("Stop checking: ") : tr("Check digits: ")) +
                            value_->accessibleName());
  check_->setVisible(offersCheck || isChecking);
  if (grey_ != nullptr) grey_->ShowHeld(digits.held);
  setVisible(!digits.text.empty());
}

}  // namespace qmx
