// SPDX-License-Identifier: MIT
#pragma once

namespace qmx {

class DocumentView;

/// Lets screen readers meet every DocumentView as a document whose text is read line by line.
void UseAccessibleDocuments();

/// Where a block begins in that text.
int AccessibleOffset(const DocumentView& view, int block);

}  // namespace qmx
