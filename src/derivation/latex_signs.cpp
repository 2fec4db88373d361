// SPDX-License-Identifier: MIT
#include "derivation/latex_signs.h"

#include <algorithm>
#include <charconv>

#include "derivation/document_reading.h"

namespace qmx {
namespace {

struct MathSign {
  char32_t character;
  std::string_view command;
};
constexpr MathSign kMathSigns[] = {{U'−', "-"},
                                   {U'·', "\\cdot "},
                                   {U'×', "\\times "},
                                   {U'÷', "\\div "},
                                   {U'±', "\\pm "},
                                   {U'√', "\\surd "},
                                   {U'≈', "\\approx "},
                                   {U'≠', "\\neq "},
                                   {U'≤', "\\leq "},
                                   {U'≥', "\\geq "},
                                   {U'→', "\\to "},
                                   {U'←', "\\leftarrow "},
                                   {U'↔', "\\leftrightarrow "},
                                   {U'∞', "\\infty "},
                                   {U'∈', "\\in "},
                                   {U'‖', "\\|"},
                                   {U'∥', "\\|"},
                                   {U'⟨', "\\langle "},
                                   {U'⟩', "\\rangle "},
                                   {U'°', "{}^{\\circ}"},
                                   {U'…', "\\ldots "},
                                   {U'⋯', "\\cdots "},
                                   {U'⋮', "\\vdots "},
                                   {U'⋱', "\\ddots "},
                                   {U'⇒', "\\Rightarrow "},
                                   {U'∑', "\\sum "},
                                   {U'∏', "\\prod "},
                                   {U'κ', "\\kappa "},
                                   {U'α', "\\alpha "},
                                   {U'β', "\\beta "},
                                   {U'γ', "\\gamma "},
                                   {U'δ', "\\delta "},
                                   {U'ε', "\\varepsilon "},
                                   {U'θ', "\\theta "},
                                   {U'λ', "\\lambda "},
                                   {U'μ', "\\mu "},
                                   {U'π', "\\pi "},
                                   {U'ρ', "\\rho "},
                                   {U'σ', "\\sigma "},
                                   {U'τ', "\\tau "},
                                   {U'φ', "\\varphi "},
                                   {U'χ', "\\chi "},
                                   {U'ω', "\\omega "},
                                   {U'Σ', "\\Sigma "},
                                   {U'Δ', "\\Delta "},
                                   {U'Λ', "\\Lambda "},
                                   {U'Ω', "\\Omega "},
                                   {U'⁻', "{}^{-}"},
                                   {U'⁺', "{}^{+}"},
                                   {U'ᵀ', "{}^{T}"},
                                   {U'₋', "{}_{-}"},
                                   {U'₊', "{}_{+}"},
                                   {U'ᵢ', "{}_{i}"},
                                   {U'ⱼ', "{}_{j}"},
                                   {U'ₖ', "{}_{k}"},
                                   {U'ₙ', "{}_{n}"},
                                   {U'²', "{}^{2}"},
                                   {U'³', "{}^{3}"},
                                   {U'¹', "{}^{1}"},
                                   {U'⁰', "{}^{0}"},
                                   {U'₀', "{}_{0}"}};

/// What running text has, and formulas have not.
constexpr MathSign kTextSigns[] = {{U'\\', "\\textbackslash{}"},
                                   {U'~', "\\textasciitilde{}"},
                                   {U'^', "\\textasciicircum{}"},
                                   {U'"', "''"},
                                   {U'–', "{--}"},
                                   {U'—', "{---}"},
                                   {U'‘', "{`}"},
                                   {U'’', "{'}"},
                                   {U'“', "{``}"},
                                   {U'”', "{''}"},
                                   {U'…', "\\ldots{}"},
                                   {U'\u00A0', "~"},
                                   {U'\u2009', "\\,"},
                                   {U'\u202F', "\\,"}};

template <std::size_t kCount>
std::string_view Find(const MathSign (&signs)[kCount], char32_t character) {
  const auto* found = std::ranges::find(signs, character, &MathSign::character);
  return found == std::end(signs) ? std::string_view() : found->command;
}

/// The command of a sign of mathematics; empty where there is none.
std::string MathCommand(char32_t character) {
  if (const std::string_view command = Find(kMathSigns, character); !command.empty()) {
    return std::string(command);
  }
  if (character >= U'₁' && character <= U'₉') {
    return "{}_{" + std::to_string(static_cast<int>(character - U'₀')) + "}";
  }
  if (character >= U'⁴' && character <= U'⁹') {
    return "{}^{" + std::to_string(static_cast<int>(character - U'⁰')) + "}";
  }
  return {};
}

std::string NumberOfCharacter(char32_t character) {
  char digits[16];
  const auto written =
      std::to_chars(digits, digits + sizeof digits, static_cast<unsigned long>(character), 16);
  return "(U+" + std::string(digits, written.ptr) + ")";
}

bool IsEscaped(char32_t c) {
  return c < 0x80 &&
         std::string_view("&%$#_{}").find(static_cast<char>(c)) != std::string_view::npos;
}

}  // namespace

std::string LatexWords(std::string_view text) {
  std::string latex;
  while (!text.empty()) {
    const char32_t c = TakeCharacter(text);
    const std::string_view sign = Find(kTextSigns, c);
    if (IsEscaped(c)) {
      latex += '\\';
      latex += static_cast<char>(c);
    } else if (!sign.empty()) {
      latex += sign;
    } else if (c == U'<' || c == U'>' || c == U'|') {
      latex += std::string("\\ensuremath{") + static_cast<char>(c) + "}";
    } else if (c == U'-' || c == U'`' || c == U'\'' || c == U'[' || c == U'*') {
      // Side by side two of them would become another sign; behind the end of a row, a command.
      latex += std::string("{") + static_cast<char>(c) + "}";
    } else if (c < 0x20) {
      latex += ' ';
    } else if (c < 0x7F) {
      latex += static_cast<char>(c);
    } else {
      const std::string command = MathCommand(c);
      latex += command.empty() ? NumberOfCharacter(c) : "\\ensuremath{" + command + "}";
    }
  }
  return latex;
}

std::string LatexMath(std::string_view text) {
  std::string latex;
  while (!text.empty()) {
    const char32_t c = TakeCharacter(text);
    if (IsEscaped(c)) {
      latex += '\\';
      latex += static_cast<char>(c);
    } else if (c == U'\\') {
      latex += "\\backslash ";
    } else if (c == U'~' || c == U'^' || c == U'"' || c == U'`') {
      latex += "\\text{" + LatexWords(std::string(1, static_cast<char>(c))) + "}";
    } else if (c < 0x20) {
      latex += ' ';
    } else if (c < 0x7F) {
      latex += static_cast<char>(c);
    } else {
      const std::string command = MathCommand(c);
      latex += command.empty() ? "\\text{" + NumberOfCharacter(c) + "}" : command;
    }
  }
  return latex;
}

}  // namespace qmx
