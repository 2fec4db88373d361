// SPDX-License-Identifier: MIT
#include "grids/accessible_document.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <algorithm>

#include "grids/document_view.h"

namespace qmx {
namespace {

class AccessibleDocument final : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  explicit AccessibleDocument(DocumentView* view)
      : QAccessibleWidget(view, QAccessible::Document) {}

  DocumentView& View() const { return *static_cast<DocumentView*>(widget()); }

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    state.focusable = true;
    return state;
  }

  int characterCount() const override { return static_cast<int>(Text().size()); }
  int cursorPosition() const override { return AccessibleOffset(View(), View().CurrentBlock()); }
  void setCursorPosition(int position) override { View().GoToBlock(BlockOf(position)); }
  QString text(int start, int end) const override { return Text().mid(start, end - start); }

  QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                       int* end) const override {
    return IsLine(type) ? LineAt(offset, 0, start, end)
                        : QAccessibleTextInterface::textAtOffset(offset, type, start, end);
  }
  QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                           int* end) const override {
    return IsLine(type) ? LineAt(offset, -1, start, end)
                        : QAccessibleTextInterface::textBeforeOffset(offset, type, start, end);
  }
  QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                          int* end) const override {
    return IsLine(type) ? LineAt(offset, 1, start, end)
                        : QAccessibleTextInterface::textAfterOffset(offset, type, start, end);
  }

  QRect characterRect(int offset) const override {
    const QRect rect = View().BlockRect(BlockOf(offset));
    return {View().viewport()->mapToGlobal(rect.topLeft()), rect.size()};
  }
  int offsetAtPoint(const QPoint& point) const override {
    return AccessibleOffset(View(), View().BlockNear(View().viewport()->mapFromGlobal(point)));
  }
  void scrollToSubstring(int start, int) override { View().GoToBlock(BlockOf(start)); }
  QString attributes(int, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }

  // Whoever hears the document selects nothing in it; it is copied as a whole.
  void selection(int, int* start, int* end) const override { *start = *end = 0; }
  int selectionCount() const override { return 0; }
  void addSelection(int, int) override {}
  void removeSelection(int) override {}
  void setSelection(int, int, int) override {}

 private:
  static bool IsLine(QAccessible::TextBoundaryType type) {
    return type == QAccessible::LineBoundary || type == QAccessible::ParagraphBoundary;
  }
  QString Text() const { return AccessibleText(View()); }
  int BlockOf(int offset) const {
    int block = 0;
    int end = 0;
    for (const QString& line : View().Spoken()) {
      end += static_cast<int>(line.size()) + 1;
      if (offset < end) return block;
      ++block;
    }
    return std::max(0, block - 1);
  }
  QString LineAt(int offset, int away, int* start, int* end) const {
    const QString all = Text();
    const auto size = static_cast<int>(all.size());
    const auto startOf = [&](int at) {
      return at <= 0 ? 0 : static_cast<int>(all.lastIndexOf('\n', at - 1)) + 1;
    };
    const auto endOf = [&](int at) {
      const auto found = static_cast<int>(all.indexOf('\n', at));
      return found < 0 ? size : found + 1;
    };
    *start = *end = -1;
    int at = offset < 0 ? size : std::min(offset, size);
    if (away < 0) at = startOf(at) - 1;
    if (away > 0) at = endOf(at);
    if (at < 0 || at > size || (away > 0 && at == size)) return {};
    *start = startOf(at);
    *end = endOf(at);
    return all.mid(*start, *end - *start);
  }
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* view = qobject_cast<DocumentView*>(object);
  return view == nullptr ? nullptr : new AccessibleDocument(view);
}

}  // namespace

void UseAccessibleDocuments() {
  static const bool isInstalled = [] {
    QAccessible::installFactory(MakeInterface);
    return true;
  }();
  static_cast<void>(isInstalled);
}

QString AccessibleText(const DocumentView& view) {
  QStringList lines;
  for (const QString& line : view.Spoken()) lines << line;
  return lines.join('\n');
}

int AccessibleOffset(const DocumentView& view, int block) {
  int offset = 0;
  for (const QString& line : view.Spoken()) {
    if (block-- <= 0) break;
    offset += static_cast<int>(line.size()) + 1;
  }
  return offset;
}

}  // namespace qmx
