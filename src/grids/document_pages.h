// SPDX-License-Identifier: MIT
#pragma once

#include <QPagedPaintDevice>
#include <memory>
#include <vector>

#include "grids/document_layout.h"

namespace qmx {

/// A document on the pages of a device, in black and grey. No line is parted, no heading stands at
/// the foot of a page, and what is wider than a page is made smaller.
class DocumentPages {
 public:
  DocumentPages(std::shared_ptr<const Document> document, NumberForm form,
                const QPagedPaintDevice& device);

  int Count() const { return count_; }
  /// Paints pages, counted from 1, one after the other; false where the device fails.
  bool Paint(QPagedPaintDevice& device, int first, int last) const;

 private:
  /// A line of the document.
  struct Strip {
    qreal top;
    qreal bottom;
    qreal right;
    bool isHeading;
    qreal scale = 1;
    int page = 0;
    qreal y = 0;  ///< On its page.
  };

  void CutIntoStrips();
  void Distribute();
  void PaintPage(QPainter& painter, int page) const;

  Typesetter setter_;
  DocumentLayout layout_;
  QString title_;
  std::vector<Strip> strips_;
  qreal width_;
  qreal height_;
  int count_ = 1;
};

}  // namespace qmx
