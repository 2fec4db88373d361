// SPDX-License-Identifier: MIT
#include "exchange/copy_forms.h"

#include <cmath>

#include "exchange/exact_text.h"

namespace qmx {

constexpr std::array<CopyFormInfo, kCopyFormCount> kCopyForms = {{
    {CopyForm::kText, "Text"},
    {CopyForm::kDecimalComma, "Text with decimal comma"},
    {CopyForm::kLatex, "LaTeX (bmatrix)"},
    {CopyForm::kMarkdown, "Markdown"},
    {CopyForm::kMatlab, "MATLAB/Octave"},
    {CopyForm::kNumpy, "NumPy"},
}};

namespace {

/// What stands around the elements of a form.
struct Frame {
  std::string_view start;
  std::string_view rowStart;
  std::string_view between;
  std::string_view betweenRows;
  std::string_view end;
};

Frame FrameOf(CopyForm form) {
  switch (form) {
    case CopyForm::kLatex:
      return {"\\begin{bmatrix}\n", "", " & ", " \\\\\n", "\n\\end{bmatrix}\n"};
    case CopyForm::kMarkdown:
      return {"", "| ", " | ", " |\n", " |\n"};
    case CopyForm::kMatlab:
      return {"[", "", ", ", ";\n ", "]\n"};
    case CopyForm::kNumpy:
      return {"np.array([", "[", ", ", "],\n          ", "]], dtype=float)\n"};
    default:
      return {"", "", "\t", "\n", "\n"};
  }
}

void AppendLatex(std::string& text, double value) {
  std::string number;
  AppendExact(number, value);
  const std::size_t exponent = number.find('E');
  if (!std::isfinite(value) || exponent == std::string::npos) {
    text += std::isfinite(value) ? number : "\\text{" + number + "}";
    return;
  }
  const bool negative = number[exponent + 1] == '-';
  const std::size_t digits = number.find_first_not_of('0', exponent + 2);
  text += number.substr(0, exponent) + " \\times 10^{" + (negative ? "-" : "") +
          number.substr(digits) + "}";
}

/// Python has words of its own for what is no finite number, and no whole number is a negative 0.
void AppendPython(std::string& text, double value) {
  if (std::isnan(value)) {
    text += "np.nan";
  } else if (std::isinf(value)) {
    text += value > 0 ? "np.inf" : "-np.inf";
  } else {
    AppendExact(text, value);
    if (value == 0 && std::signbit(value)) text += ".0";
  }
}

void AppendMatlab(std::string& text, double value) {
  if (std::isinf(value)) {
    text += value > 0 ? "Inf" : "-Inf";
  } else {
    AppendExact(text, value);
  }
}

void Append(std::string& text, double value, CopyForm form) {
  switch (form) {
    case CopyForm::kLatex:
      return AppendLatex(text, value);
    case CopyForm::kNumpy:
      return AppendPython(text, value);
    case CopyForm::kMatlab:
      return AppendMatlab(text, value);
    default:
      return AppendExact(text, value, form == CopyForm::kDecimalComma ? ',' : '.');
  }
}

void AppendFraction(std::string& text, const std::string& fraction, CopyForm form) {
  const std::size_t bar = fraction.find('/');
  if (form != CopyForm::kLatex || bar == std::string::npos) {
    text += fraction;
    return;
  }
  const bool negative = fraction.front() == '-';
  text += negative ? "-\\frac{" : "\\frac{";
  text += fraction.substr(negative ? 1 : 0, bar - (negative ? 1 : 0)) + "}{" +
          fraction.substr(bar + 1) + "}";
}

std::string Heading(CopyForm form, int cols) {
  constexpr int kUsualLatexColumns = 10;
  std::string heading;
  if (form == CopyForm::kLatex && cols > kUsualLatexColumns)
    heading = "\\setcounter{MaxMatrixCols}{" + std::to_string(cols) + "}\n";
  if (form != CopyForm::kMarkdown) return heading;
  for (int j = 0; j < cols; ++j) heading += "|   ";
  heading += "|\n";
  for (int j = 0; j < cols; ++j) heading += "| ---: ";
  return heading + "|\n";
}

}  // namespace

std::string CopyText(const Matrix& values, CopyForm form, const FractionOf& fraction) {
  if (values.Size() == 0) return {};
  const Frame frame = FrameOf(form);
  std::string text = Heading(form, values.Cols());
  constexpr std::size_t kUsualLength = 22;
  text.reserve(text.size() + values.Size() * kUsualLength);
  text += frame.start;
  for (int i = 1; i <= values.Rows(); ++i) {
    if (i > 1) text += frame.betweenRows;
    text += frame.rowStart;
    for (int j = 1; j <= values.Cols(); ++j) {
      if (j > 1) text += frame.between;
      const std::string exact = fraction ? fraction(i, j) : std::string();
      exact.empty() ? Append(text, values(i, j), form) : AppendFraction(text, exact, form);
    }
  }
  text += frame.end;
  return text;
}

}  // namespace qmx
