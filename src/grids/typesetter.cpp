// SPDX-License-Identifier: MIT
// Numbers, names and operators. Matrices have a file of their own.
#include "grids/typesetter.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "derivation/document_reading.h"
#include "grids/contrast.h"
#include "grids/digit_runs.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

constexpr QChar kMinus(0x2212);
constexpr qreal kSmallSize = 0.8;
/// How much of the accent the ground of a changed element has.
constexpr double kTintShare = 0.16;

struct FaceInfo {
  qreal size;
  bool isItalic;
  bool isBold;
};
constexpr std::array<FaceInfo, kFaceCount> kFaces{{{1, false, false},
                                                   {1, true, false},
                                                   {1, false, true},
                                                   {kSmallSize, false, false},
                                                   {kSmallSize, true, false},
                                                   {kSmallSize, false, true},
                                                   {1, false, true},
                                                   {1.2, false, true},
                                                   {1.5, false, true}}};

QFont MadeOf(const QFont& font, const FaceInfo& info) {
  QFont made = font;
  if (font.pointSizeF() > 0) {
    made.setPointSizeF(font.pointSizeF() * info.size);
  } else {
    made.setPixelSize(std::max(1, qRound(font.pixelSize() * info.size)));
  }
  made.setItalic(info.isItalic);
  made.setBold(info.isBold);
  return made;
}

/// A minus as long as a plus is wide, where the text has a hyphen.
QString WithMinus(std::string_view digits) { return ToQString(digits).replace('-', kMinus); }

/// Beside one another on one line.
Extent Joined(const Extent& one, const Extent& other) {
  return {one.width + other.width, std::max(one.ascent, other.ascent),
          std::max(one.descent, other.descent)};
}

Face SmallOf(Face face) { return face == Face::kBold ? Face::kSmallBold : Face::kSmall; }

std::string_view WithoutSign(std::string_view digits) {
  return digits.starts_with('-') ? digits.substr(1) : digits;
}

}  // namespace

PageColours::PageColours(const QPalette& palette)
    : ground(palette.color(QPalette::Base)),
      text(palette.color(QPalette::Text)),
      muted(UnprovedColour(text, ground)),
      accent(palette.color(QPalette::Highlight)),
      tint(Mixed(ground, accent, kTintShare)) {
  // A frame has to be seen, whatever the desktop highlights with.
  constexpr double kClear = 3;
  for (double share = 0.1; Contrast(accent, ground) < kClear && share <= 1; share += 0.1)
    accent = Mixed(palette.color(QPalette::Highlight), text, share);
}

PageColours PageColours::OfPaper() {
  PageColours colours;
  colours.ground = Qt::white;
  colours.text = Qt::black;
  colours.muted = UnprovedColour(colours.text, colours.ground);
  colours.accent = QColor(0x30, 0x30, 0x30);
  colours.tint = QColor(0xe8, 0xe8, 0xe8);
  return colours;
}

bool IsDecimalExact(const ShownNumber& number) {
  constexpr std::size_t kMostDigits = 18;  // Of 64 bits.
  const ExactNumber& exact = number.exact;
  const bool isNegative = number.decimal.starts_with('-');
  if (exact.radicand != "1" || exact.numerator.starts_with('-') != isNegative) return false;
  std::string digits(WithoutSign(number.decimal));
  const std::size_t point = digits.find('.');
  const std::size_t places = point == std::string::npos ? 0 : digits.size() - point - 1;
  if (point != std::string::npos) digits.erase(point, 1);
  const std::string_view numerator = WithoutSign(exact.numerator);
  for (const std::string_view text :
       {std::string_view(digits), numerator, std::string_view(exact.denominator)}) {
    const bool isWhole = text.find_first_not_of("0123456789") == std::string_view::npos;
    if (!isWhole || text.empty() || text.size() > kMostDigits) return false;
  }
  std::uint64_t power = 1;
  for (std::size_t k = 0; k < places; ++k) power *= 10;
  const std::uint64_t denominator = std::stoull(exact.denominator);
  // The last decimal place is 1 / power; the number has to be so many of them.
  if (power % denominator != 0) return false;
  const std::uint64_t factor = power / denominator;
  const std::uint64_t whole = std::stoull(digits);
  return whole % factor == 0 && whole / factor == std::stoull(std::string(numerator));
}

Typesetter::Typesetter(const QFont& font, NumberForm form, const PageColours& colours)
    : form_(form), colours_(colours) {
  faces_.reserve(kFaceCount);
  for (const FaceInfo& info : kFaces) {
    const QFont made = MadeOf(font, info);
    faces_.push_back({made, QFontMetricsF(made), {}});
    Metrics& metrics = faces_.back();
    for (int code = 0x20; code < 0x7f; ++code) {
      const QChar character = code == '-' ? kMinus : QChar(code);
      metrics.widths[static_cast<std::size_t>(code)] = metrics.all.horizontalAdvance(character);
    }
  }
  em_ = Of(Face::kText).all.height() * 0.8;
  axis_ = Of(Face::kText).all.tightBoundingRect("+").center().y() * -1;
}

Extent Typesetter::EmptyLine(Face face) const {
  return {0, Of(face).all.ascent(), Of(face).all.descent()};
}

void Typesetter::Pen(QPainter& painter, const QColor& colour, qreal share) const {
  painter.setPen(
      QPen(colour, std::max(1.0, em_ * share), Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  painter.setBrush(Qt::NoBrush);
}

Extent Typesetter::SetText(QPainter* painter, QPointF at, Face face, const QString& text) const {
  const Metrics& metrics = Of(face);
  if (painter != nullptr) {
    painter->setFont(metrics.font);
    painter->setPen(colours_.text);
    painter->drawText(at, text);
  }
  return {metrics.all.horizontalAdvance(text), metrics.all.ascent(), metrics.all.descent()};
}

Extent Typesetter::SetDigits(QPainter* painter, QPointF at, Face face, const Digits& digits) const {
  const Metrics& metrics = Of(face);
  const auto widthOf = [&metrics](std::string_view text) {
    qreal width = 0;
    for (const char character : text) width += metrics.widths[character & 0x7f];
    return width;
  };
  if (painter != nullptr) {
    painter->setFont(metrics.font);
    // The exponent of a number goes with the digits that hold.
    const std::size_t end = std::min(digits.text.find('E'), digits.text.size());
    const std::size_t held = std::min(digits.held, end);
    qreal x = at.x();
    const auto draw = [&](std::string_view part, const QColor& colour) {
      if (part.empty()) return;
      painter->setPen(colour);
      painter->drawText(QPointF(x, at.y()), WithMinus(part));
      x += widthOf(part);
    };
    draw(digits.text.substr(0, held), colours_.text);
    draw(digits.text.substr(held, end - held), colours_.muted);
    draw(digits.text.substr(end), held > 0 ? colours_.text : colours_.muted);
  }
  return {widthOf(digits.text), metrics.all.ascent(), metrics.all.descent()};
}

Extent Typesetter::SetRoot(QPainter* painter, QPointF at, Face face, std::string_view factor,
                           std::string_view radicand) const {
  const bool hasFactor = factor != "1" && factor != "-1";
  const std::string_view before = hasFactor ? factor : factor.substr(0, factor.size() - 1);
  Extent all;
  if (!before.empty()) all = SetDigits(painter, at, face, {before, before.size()});
  const qreal hook = em_ * 0.5;
  const qreal over = em_ * 0.12;
  const QPointF start = at + QPointF(all.width, 0);
  const Extent inside =
      SetDigits(painter, start + QPointF(hook, 0), face, {radicand, radicand.size()});
  if (painter != nullptr) {
    Pen(*painter, colours_.text, 0.06);
    const qreal top = at.y() - inside.ascent * 0.85 - over;
    const QPointF corner(start.x() + hook * 0.9, top);
    const QPointF line[] = {{start.x() + hook * 0.1, at.y() - inside.ascent * 0.35},
                            {start.x() + hook * 0.3, at.y() - inside.ascent * 0.42},
                            {start.x() + hook * 0.55, at.y() + inside.descent * 0.4},
                            corner,
                            {start.x() + hook + inside.width, top}};
    painter->drawPolyline(line, 5);
  }
  return Joined(all, {hook + inside.width + over, inside.ascent + over, inside.descent});
}

Extent Typesetter::SetFraction(QPainter* painter, QPointF at, Face face,
                               const ExactNumber& number) const {
  Extent sign;
  if (number.numerator.starts_with('-')) {
    sign = SetDigits(painter, at, face, {"-", 1});
    sign.width += em_ * 0.05;
  }
  const Face small = SmallOf(face);
  const std::string_view upper = WithoutSign(number.numerator);
  const auto setUpper = [&](QPainter* on, QPointF place) {
    return number.radicand == "1" ? SetDigits(on, place, small, {upper, upper.size()})
                                  : SetRoot(on, place, small, upper, number.radicand);
  };
  const Digits lower{number.denominator, number.denominator.size()};
  const Extent above = setUpper(nullptr, {});
  const Extent below = SetDigits(nullptr, {}, small, lower);
  const qreal edge = em_ * 0.08;
  const qreal gap = em_ * 0.09;
  const qreal width = std::max(above.width, below.width) + 2 * edge;
  // Digits reach no further down than the line, and less far up than the tallest letters.
  const qreal drop = below.ascent * 0.88;
  if (painter != nullptr) {
    const qreal left = at.x() + sign.width;
    const qreal bar = at.y() - axis_;
    setUpper(painter, {left + (width - above.width) / 2, bar - gap * 2});
    SetDigits(painter, {left + (width - below.width) / 2, bar + gap + drop}, small, lower);
    Pen(*painter, colours_.text, 0.06);
    painter->drawLine(QPointF(left, bar), QPointF(left + width, bar));
  }
  return Joined(sign, {width + edge, above.ascent + gap * 2 + axis_, drop + gap * 2 - axis_});
}

Extent Typesetter::SetExact(QPainter* painter, QPointF at, Face face, const ExactNumber& number,
                            bool isStacked) const {
  if (number.denominator != "1" && isStacked) return SetFraction(painter, at, face, number);
  Extent all;
  if (number.radicand == "1") {
    all = SetDigits(painter, at, face, {number.numerator, number.numerator.size()});
  } else {
    all = SetRoot(painter, at, face, number.numerator, number.radicand);
  }
  if (number.denominator == "1") return all;
  const std::string rest = "/" + number.denominator;
  return Joined(all,
                SetDigits(painter, at + QPointF(all.width, 0), face, Digits{rest, rest.size()}));
}

Extent Typesetter::SetNumber(QPainter* painter, QPointF at, const ShownNumber& number,
                             const Setting& setting) const {
  Extent all;
  const auto end = [&] { return at + QPointF(all.width, 0); };
  const auto addSign = [&](std::string_view sign) {
    all = Joined(all, SetOperator(painter, end(), sign));
  };
  const ShownForms forms = FormsOf(number, form_);
  if (setting.inParentheses) addSign("(");
  if (forms.exact)
    all = Joined(all, SetExact(painter, end(), setting.face, number.exact, setting.isFormula));
  if (forms.exact && forms.decimal) {
    all.width += Blank();
    addSign(IsDecimalExact(number) ? "=" : "\u2248");
    all.width += Blank();
  }
  if (forms.decimal)
    all = Joined(all, SetDigits(painter, end(), setting.face, {number.decimal, number.held}));
  if (!forms.exact && !forms.decimal) addSign(kUnknownNumber);
  if (setting.inParentheses) addSign(")");
  return all;
}

Extent Typesetter::SetName(QPainter* painter, QPointF at, const Name& name) const {
  const QString letter = ToQString(name.letter);
  Extent all = SetText(painter, at, letter.size() == 1 ? Face::kItalic : Face::kText, letter);
  const QPointF end = at + QPointF(all.width + em_ * 0.04, 0);
  const qreal shift = Of(Face::kText).all.ascent() * 0.4;
  const qreal sink = Of(Face::kText).all.descent() * 0.6;
  Extent index;
  Extent power;
  if (!name.index.empty()) {
    index = SetText(painter, end + QPointF(0, sink), Face::kSmall, ToQString(name.index));
    all.descent = std::max(all.descent, index.descent + sink);
  }
  if (!name.power.empty()) {
    power = SetText(painter, end - QPointF(0, shift), Face::kSmall, WithMinus(name.power));
    all.ascent = std::max(all.ascent, power.ascent + shift);
  }
  all.width += std::max(index.width, power.width) + em_ * 0.06;
  return all;
}

Extent Typesetter::SetOperator(QPainter* painter, QPointF at, std::string_view sign) const {
  return SetText(painter, at, Face::kText, WithMinus(sign));
}

Extent Typesetter::Set(QPainter* painter, QPointF at, const Piece& piece,
                       const Setting& setting) const {
  if (const auto* words = std::get_if<Words>(&piece))
    return SetText(painter, at, setting.face, ToQString(words->text));
  if (const auto* name = std::get_if<Name>(&piece)) return SetName(painter, at, *name);
  if (const auto* sign = std::get_if<Operator>(&piece)) return SetOperator(painter, at, sign->sign);
  if (const auto* number = std::get_if<ShownNumber>(&piece))
    return SetNumber(painter, at, *number, setting);
  return SetMatrix(painter, at, std::get<ShownMatrix>(piece));
}

}  // namespace qmx
