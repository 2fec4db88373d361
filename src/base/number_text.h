// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qmx {

// The only place where doubles become text or text becomes doubles. No locale takes part: the
// decimal point is ".".
//
// One conversion lies below all of them. A number is rounded to its significant digits, zeros at
// the end go, and the rest is written plainly while it needs no more places before the point, and
// no more after it, than the conversion has digits; else in exponent form with a sign and at least
// two digits of exponent. Zero has no sign.

/// The standard conversion with up to 15 significant digits.
///   0.5 -> "0.5"   1/3 -> "0.333333333333333"   1/30 -> "3.33333333333333E-02"   0.0001 ->
///   "0.0001"   1e15 -> "1E+15" -2.0 -> "-2"   123456789012345.0 -> "123456789012345"   -0.0 -> "0"
std::string CStr(double value);

/// The decimal text of an integer: 3 -> "3", -1 -> "-1".
std::string CStr(int value);

/// The value rounded to single precision, with up to 7 significant digits. A value beyond single
/// precision keeps its magnitude and shows with 7 digits.
///   1/3 -> "0.3333333"   1/30 -> "3.333334E-02"   1e7 -> "1E+07"   1e300 -> "1E+300"   1e-50 ->
///   "0"
std::string CStrSingle(double value);

/// A number of a printed table, with up to `digits` significant digits, 1 to 17. As CStr, but three
/// more places behind the point are plain: columns are narrower where few numbers have exponents.
///   1/30 with 3 digits -> "0.0333"   1/3 with 7 -> "0.3333333"   1e-6 with 3 -> "0.000001"
std::string TableNumber(double value, int digits);

/// As CStr, but with a leading blank for the sign of a number that is not negative, and no 0 before
/// the point.
///   0.5 -> " .5"   -0.5 -> "-.5"   0 -> " 0"   1e20 -> " 1E+20"
std::string Str(double value);

/// How a report prints a number: Str and a trailing blank. 2.5 -> " 2.5 "   -2.5 -> "-2.5 "
std::string PrintItem(double value);
std::string PrintItem(int value);

/// How a file holds a number so that nothing is lost: with 15 digits where these read back to the
/// same double, else with the fewest digits (16 or 17) that do. No 0 before the point, no leading
/// blank.
///   0.5 -> ".5"   1/3 -> ".3333333333333333"   0.1 -> ".1"   0.1+0.2 -> ".30000000000000004"
/// Writes to `out`, which must have room for kFileNumberRoom characters; returns the end of what
/// was written.
char* WriteFileNumber(char* out, double value);
inline constexpr int kFileNumberRoom = 48;
std::string FileNumber(double value);

/// How the clipboard holds a number so that nothing is lost: the digits of WriteFileNumber, with a
/// 0 before the point as the grids show it. 0.5 -> "0.5"   1/3 -> "0.3333333333333333"
char* WriteClipboardNumber(char* out, double value);

/// How a field shows a number that it may be asked for again: as CStr where 15 digits read back to
/// the same double, else with the fewest digits that do. 0.5 -> "0.5"   0.1+0.2 ->
/// "0.30000000000000004"
std::string CStrExact(double value);

/// The value of the longest leading part of a text that reads as a finite decimal number; blanks in
/// front are skipped. A text without such a part gives 0. Never faults.
///   "12abc" -> 12   "1.5e" -> 1.5   "1e3" -> 1000   " .5" -> 0.5   "+7" -> 7   "" -> 0   "1e999"
///   -> 1e99   "-" -> 0
double Val(std::string_view text);

/// What Val makes of a text, and how much of it: the part from `begin` up to `end` is the number;
/// both are equal where there is none.
///   " 12abc" -> 12 from 1 to 3   "1.5e" -> 1.5 from 0 to 3   "-" -> 0 from 0 to 0
struct NumberRead {
  double value = 0;
  std::size_t begin = 0;
  std::size_t end = 0;
};
NumberRead ReadNumber(std::string_view text);

/// The double that a whole text is, with an optional sign in front and no blanks; nothing where the
/// text is not exactly one finite number.
std::optional<double> ParseNumber(std::string_view text);

/// Reads the number with which a text begins, up to where it ends; blanks are not skipped. Returns
/// the end of the number, or null where there is none, or one that is no finite double. Words that
/// stand for infinite values are no numbers here.
///   "12abc" -> 12, "abc" left   "+.5,1" -> 0.5, ",1" left   " 1", "nan", "1e999" -> null
const char* ParseLeadingNumber(const char* at, const char* end, double& value);

/// A value rounded to a whole number, halves to even, held within the range of a 32-bit integer. A
/// NaN gives 0.
///   2.5 -> 2   3.5 -> 4   1e99 -> 2147483647
std::int32_t RoundToInteger(double value);

/// RoundToInteger of Val: what an integer field holds that is not a dimension.
std::int32_t IntegerValue(std::string_view text);

/// A count of rows or columns: a whole number from `least` on, blanks around it are fine. Nothing
/// for any other text, or for a number beyond 32 bits.
///   " 3 " -> 3   "2.0", "abc", "", "-1" -> nothing   "0" -> nothing where least is 1
std::optional<int> ParseDimension(std::string_view text, int least = 1);

/// A decimal number with at most 15 significant digits rounded to `places` decimal places, halves
/// to even, as decimal arithmetic does it: the digits of the value's text are what is rounded.
///   1.00000000005 to 10 places -> 1   1.00000000015 -> 1.0000000002   9.99999999999 -> 10
double RoundDecimal(double value, int places);

}  // namespace qmx
