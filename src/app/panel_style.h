// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace qmx {

/// How the frames of the main window look: the title stands inside, on a line of its own, and takes
/// no more room than its text. A frame that stands in another one has no edge; the title of one
/// that does not is bold.
class PanelStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  PanelStyle();

  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
};

}  // namespace qmx
