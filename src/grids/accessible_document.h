// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace qmx {

class DocumentView;

/// Lets screen readers meet every DocumentView as a document whose text is read line by line.
void UseAccessibleDocuments();

/// All that is read aloud, a line for each block.
QString AccessibleText(const DocumentView& view);

/// Where a block begins in that text.
int AccessibleOffset(const DocumentView& view, int block);

}  // namespace qmx
