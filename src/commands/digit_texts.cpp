// SPDX-License-Identifier: MIT
#include "commands/digit_texts.h"

#include <cmath>

#include "base/number_text.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

constexpr const char* kNotYet = "Not checked yet";
constexpr const char* kUnchecked = "not checked";
constexpr const char* kChecking = "Checking digits...";
constexpr const char* kNoProof = "The digits cannot be proved";
constexpr const char* kChanged = "A has changed";
constexpr const char* kNoDigitHolds = ": no digit is proved";

std::string Decapitalised(std::string text) {
  if (!text.empty() && text[0] >= 'A' && text[0] <= 'Z' && !text.starts_with("A ")) {
    text[0] = static_cast<char>(text[0] - 'A' + 'a');
  }
  return text;
}

/// What makes a result rounding noise; empty where it is none.
std::string NoiseText(const DigitFinding& finding) {
  if (!finding.singular) return {};
  switch (finding.task) {
    case ProofTask::kInverse:
      return "A is singular: this inverse is rounding noise";
    case ProofTask::kSolution:
      return "The system is singular: this solution is rounding noise";
    case ProofTask::kSolutionByFactors:
      return "U is singular: this solution is rounding noise";
    case ProofTask::kLeastSquares:
      return "The unknowns are not determined: this solution is rounding noise";
    default:
      return {};
  }
}

std::string Place(const FewestDigits& fewest, bool isColumn) {
  const std::string row = "row " + CStr(fewest.row);
  return isColumn ? row : row + ", column " + CStr(fewest.col);
}

std::string FewestText(const FewestDigits& fewest, int most, bool isColumn) {
  if (fewest.digits >= most) return "All digits hold";
  const std::string place = Place(fewest, isColumn);
  if (fewest.digits == 0) return "Some numbers have no proved digit; the first is at " + place;
  const std::string held = fewest.digits == 1 ? "1 digit holds" : HeldText(fewest.digits);
  return "At least " + held + "; fewest at " + place;
}

/// What is to be known beside the digits.
std::string Remarks(const DigitFinding& finding) {
  std::string text;
  if (finding.task == ProofTask::kSolutionByFactors) text = "; for the factors as they are stored";
  if (finding.singular && finding.task == ProofTask::kLu)
    text = "; nothing is determined beyond the zero pivot";
  if (finding.singular && finding.task == ProofTask::kQr)
    text = "; nothing is determined beyond the dependent column";
  if (!finding.conditionExponent) return text;
  const int exponent = *finding.conditionExponent;
  return text + "; condition number about " + (exponent == 0 ? "1" : "10^" + CStr(exponent));
}

std::string KnownText(const DigitFinding& finding, Slot slot, bool wide) {
  std::string noise = NoiseText(finding);
  if (!noise.empty()) return noise;
  const std::size_t index = FindingIndex(slot);
  if (index >= finding.matrices.size() || finding.outcome == ProofOutcome::kDoesNotFit ||
      finding.outcome == ProofOutcome::kCannotBeProved)
    return kNoProof;
  const CellProofs& cells = *finding.matrices[index];
  const bool isColumn = InfoOf(slot).kind == WindowKind::kColumnViewer;
  return FewestText(wide ? cells.proof.wide : cells.proof.narrow,
                    wide ? kWideDigits : kNarrowDigits, isColumn) +
         Remarks(finding);
}

/// What is known already of a check that would take longer.
std::string OfferedText(const DigitStanding& standing, Slot slot, bool wide) {
  const DigitFinding* finding = standing.finding;
  const bool isPart = finding != nullptr && finding->outcome == ProofOutcome::kPartlyProved;
  return isPart ? KnownText(*finding, slot, wide) : kNotYet;
}

std::string StateText(const Workspace& workspace, Slot slot, const DigitStanding& standing,
                      bool wide) {
  switch (standing.state) {
    case DigitState::kNone:
      return {};
    case DigitState::kStale:
      return ShortStaleness(workspace, ResultOf(slot).result) + kNoDigitHolds;
    case DigitState::kWaiting:
      return kNotYet;
    case DigitState::kChecking:
      return kChecking;
    case DigitState::kOffered:
      return OfferedText(standing, slot, wide);
    case DigitState::kKnown:
      return KnownText(*standing.finding, slot, wide);
  }
  return {};
}

std::string Enclosure(const ElementProof& proof) {
  const bool below = std::isfinite(proof.lower);
  const bool above = std::isfinite(proof.upper);
  if (below && above) {
    if (proof.lower == proof.upper) return "The exact value is " + CStrExact(proof.lower);
    return "The exact value lies between " + CStrExact(proof.lower) + " and " +
           CStrExact(proof.upper);
  }
  if (below) return "The exact value is at least " + CStrExact(proof.lower);
  if (above) return "The exact value is at most " + CStrExact(proof.upper);
  return {};
}

ScalarDigits TellVerdict(const DigitFinding& finding) {
  switch (finding.verdict) {
    case VerdictProof::kProved:
      return {"proved", "The verdict is proved"};
    case VerdictProof::kDisproved:
      return {"disproved", "The exact numbers say otherwise: this verdict is wrong"};
    case VerdictProof::kNotProved:
      break;
  }
  return {"not proved", "The verdict could not be proved"};
}

ScalarDigits TellNumber(const DigitFinding& finding, std::string_view shown) {
  if (finding.matrices.empty()) return {"no proof", kNoProof, 0};
  const CellProofs& cells = *finding.matrices.front();
  ScalarDigits told;
  told.held = cells.Held(1, 1, shown, kWideDigits);
  told.text = told.held >= kWideDigits ? "all digits hold" : HeldText(told.held);
  if (told.held == 0) told.text = "none proved";
  told.toolTip = CellDigitTip(cells, 1, 1, shown, kWideDigits);
  if (finding.singular) told.toolTip += "\nA is singular";
  return told;
}

}  // namespace

std::size_t FindingIndex(Slot slot) {
  if (slot == kSlotEigenvectors) return 1;  // Their values come first.
  return slot == ResultOf(slot).firstSlot ? 0 : 1;
}

std::string DigitLine(const Workspace& workspace, Slot slot, const DigitStanding& standing,
                      bool wide) {
  const Result result = ResultOf(slot).result;
  if (result == kResultExchanges) return "All digits hold: this is the order of rows that was used";
  std::string text = StateText(workspace, slot, standing, wide);
  // What is there no more, such as factors whose successors were refused, may still be on show.
  if (text.empty() && !InfoOf(slot).IsEditor()) return HeldText(0);
  if (slot != kSlotA || text.empty()) return text;
  const bool isScaled = workspace.computations[kResultA]->change == Computation::Change::kScaled;
  return (isScaled ? "Multiple of A: " : "Shift of A: ") + Decapitalised(text);
}

std::string HeldText(int digits) {
  if (digits == 0) return "No digit is proved";
  return digits == 1 ? "1 digit holds" : CStr(digits) + " digits hold";
}

std::string CellDigitTip(const CellProofs& cells, int row, int col, std::string_view shown,
                         int most) {
  std::string text = HeldText(cells.Held(row, col, shown, most));
  const ElementProof* proof = cells.Find(row, col);
  const std::string enclosure = proof == nullptr ? std::string() : Enclosure(*proof);
  return enclosure.empty() ? text : text + "\n" + enclosure;
}

ScalarDigits TellScalar(const Workspace& workspace, Result result, const DigitStanding& standing,
                        std::string_view shown) {
  switch (standing.state) {
    case DigitState::kNone:
      return {};
    case DigitState::kStale: {
      const std::string changed = ShortStaleness(workspace, result);
      return {kChanged, changed + kNoDigitHolds, 0};
    }
    case DigitState::kWaiting:
      return {kUnchecked, kNotYet, 0};
    case DigitState::kOffered:
      return {kUnchecked, "Not checked yet, since it may take long", 0};
    case DigitState::kChecking:
      return {"checking...", kChecking, 0};
    case DigitState::kKnown:
      break;
  }
  return InfoOf(result).verdict != nullptr ? TellVerdict(*standing.finding)
                                           : TellNumber(*standing.finding, shown);
}

}  // namespace qmx
