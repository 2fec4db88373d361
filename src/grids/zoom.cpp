// SPDX-License-Identifier: MIT
#include "grids/zoom.h"

#include <QApplication>
#include <QWheelEvent>
#include <algorithm>
#include <array>

namespace qmx {
namespace {

constexpr std::array<int, 13> kSteps{50, 67, 80, 90, 100, 110, 125, 150, 175, 200, 250, 300, 400};
constexpr int kNormal = 100;
constexpr int kNotch = 120;  // What a wheel turns at once.

int NearestStep(int percent) {
  const auto nearer = [percent](int one, int other) {
    return std::abs(one - percent) < std::abs(other - percent);
  };
  return static_cast<int>(std::min_element(kSteps.begin(), kSteps.end(), nearer) - kSteps.begin());
}

}  // namespace

Zoom::Zoom() {
  const auto add = [this](const char* name, const QString& text, const QString& toolTip,
                          const QList<QKeySequence>& keys, auto action) {
    auto* entry = new QAction(text, this);
    entry->setObjectName(name);
    entry->setToolTip(toolTip);
    entry->setShortcuts(keys);
    entry->setShortcutVisibleInContextMenu(true);
    connect(entry, &QAction::triggered, this, action);
    entries_.append(entry);
  };
  add("mnuZoomIn", tr("&Larger"), tr("Larger texts in all grids and in Results"),
      {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
      [this] { Step(1); });
  add("mnuZoomOut", tr("&Smaller"), tr("Smaller texts in all grids and in Results"),
      {QKeySequence(Qt::CTRL | Qt::Key_Minus)}, [this] { Step(-1); });
  add("mnuZoomNormal", tr("&Normal size"), tr("The desktop's own size of texts"),
      {QKeySequence(Qt::CTRL | Qt::Key_0)}, [this] { Set(kNormal); });
}

void Zoom::Set(int percent) {
  const int next = kSteps[NearestStep(percent)];
  if (next == percent_) return;
  percent_ = next;
  views_.removeIf([](const auto& view) { return view.isNull(); });
  for (const auto& view : std::as_const(views_)) Apply(*view);
  Q_EMIT Changed(percent_);
}

void Zoom::Step(int steps) {
  const int last = static_cast<int>(kSteps.size()) - 1;
  Set(kSteps[std::clamp(NearestStep(percent_) + steps, 0, last)]);
}

void Zoom::Attach(QWidget& window, QAbstractScrollArea& view) {
  views_.append(&view);
  window.addActions(entries_);
  // A wheel turns over the cells, or over what lies on them.
  window.installEventFilter(this);
  view.viewport()->installEventFilter(this);
  if (percent_ != kNormal) Apply(view);
}

// Only the size is ours: the results list has a family of its own.
void Zoom::Apply(QAbstractScrollArea& view) const {
  const QFont normal = QApplication::font(&view);
  QFont font = view.font();
  const double factor = percent_ / 100.0;
  if (normal.pointSizeF() > 0) {
    font.setPointSizeF(normal.pointSizeF() * factor);
  } else {
    font.setPixelSize(std::max(1, qRound(normal.pixelSize() * factor)));
  }
  view.setFont(font);
}

bool Zoom::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return QObject::eventFilter(watched, event);
  const auto* wheel = static_cast<QWheelEvent*>(event);
  if (!wheel->modifiers().testFlag(Qt::ControlModifier)) return false;
  wheel_ += wheel->angleDelta().y();
  const int steps = wheel_ / kNotch;
  wheel_ -= steps * kNotch;
  if (steps != 0) Step(steps);
  return true;
}

}  // namespace qmx
