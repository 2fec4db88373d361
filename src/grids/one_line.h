// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

namespace qmx {

/// Tells which characters a field takes.
using AcceptsCharacter = bool (*)(QChar);

/// Makes a field take one line alone, of the characters that it accepts (any where `accepts` is
/// null), whichever way a text comes to it. The ends of the line are left out. Anything else is
/// refused as a whole, and a hint beside the field says what belongs there.
void TakeOneLine(QLineEdit& field, AcceptsCharacter accepts, const QString& hint);

}  // namespace qmx
