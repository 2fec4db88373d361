// SPDX-License-Identifier: MIT
#include "grids/one_line.h"

#include <QToolTip>
#include <QValidator>
#include <algorithm>

namespace qmx {
namespace {

bool EndsLine(QChar character) {
  switch (character.unicode()) {
    case '\n':
    case '\r':
    case '\v':
    case '\f':
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
      return true;
    default:
      return false;
  }
}

class OneLine : public QValidator {
 public:
  OneLine(AcceptsCharacter accepts, QObject* parent) : QValidator(parent), accepts_(accepts) {}

  State validate(QString& text, int& cursor) const override {
    while (!text.isEmpty() && EndsLine(text.back())) text.chop(1);
    cursor = std::min(cursor, static_cast<int>(text.size()));
    const bool fits = std::all_of(text.cbegin(), text.cend(), [this](QChar character) {
      return !EndsLine(character) && (accepts_ == nullptr || accepts_(character));
    });
    return fits ? Acceptable : Invalid;
  }

 private:
  AcceptsCharacter accepts_;
};

}  // namespace

void TakeOneLine(QLineEdit& field, AcceptsCharacter accepts, const QString& hint) {
  field.setValidator(new OneLine(accepts, &field));
  QObject::connect(&field, &QLineEdit::inputRejected, &field, [&field, hint] {
    QToolTip::showText(field.mapToGlobal(field.rect().bottomLeft()), hint, &field);
  });
}

}  // namespace qmx
