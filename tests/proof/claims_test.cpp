// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <sstream>

#include "base/number_text.h"
#include "proof/oracle.h"
#include "proof/proof.h"
#include "proof/questions.h"
#include "support/core_compare.h"

namespace qmx {
namespace {

using testing::Rational;
using testing::Truth;

/// How many claims to check of a task: some thousands, or as many as the environment asks for. The
/// truth about eigenvectors takes its time.
long ClaimsOf(ProofTask task) {
  const char* const asked = std::getenv("QMX_PROOF_CLAIMS");
  if (asked != nullptr) return std::atol(asked);
  return task == ProofTask::kEigen ? 1500 : 12000;
}

/// Claims of "so many digits hold" against the truth.
class Tally {
 public:
  void Compare(const ProofQuestion& question, const ProofAnswer& answer);

  long Count() const { return count_; }
  long Unsharp() const { return unsharp_; }
  long Held() const { return held_; }
  bool IsFalse() const { return !falsehood_.empty(); }
  const std::string& Falsehood() const { return falsehood_; }
  const std::string& ExampleOfUnsharp() const { return unsharpExample_; }

 private:
  void Compare(int claimed, const Rational& shown, int most, const std::optional<Rational>& exact);
  void CompareElement(double value, const ElementProof& proof,
                      const std::optional<Rational>& exact);

  void CompareEigenvalues(const ResultProof& proofs);

  const ProofQuestion* question_ = nullptr;
  bool isEigenvalue_ = false;
  long count_ = 0;
  long unsharp_ = 0;
  long held_ = 0;
  std::string falsehood_;
  std::string unsharpExample_;
};

std::string Describe(const ProofQuestion& question, const Rational& shown, int claimed, int truth) {
  std::ostringstream text;
  text << testing::NameOf(question.task) << ": " << shown.ToDouble() << " claims " << claimed
       << " digits, " << truth << " hold; A = " << testing::Print(question.a)
       << " B = " << testing::Print(question.b) << " system = " << testing::Print(question.system)
       << " exchanges = " << testing::Print(question.exchanges);
  for (const Matrix& computed : question.computed) text << " computed " << testing::Print(computed);
  return text.str();
}

void Tally::Compare(int claimed, const Rational& shown, int most,
                    const std::optional<Rational>& exact) {
  const int truth = exact ? testing::TrueDigits(shown, most, *exact) : 0;
  ++count_;
  held_ += claimed;
  if (claimed > truth && !IsFalse()) falsehood_ = Describe(*question_, shown, claimed, truth);
  if (claimed < truth - 1) {
    ++unsharp_;
    if (unsharpExample_.empty()) unsharpExample_ = Describe(*question_, shown, claimed, truth);
  }
}

bool Contains(const ElementProof& proof, const Rational& exact) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const bool isBelow = proof.lower > -kInfinity && exact < Rational(proof.lower);
  const bool isAbove = proof.upper < kInfinity && Rational(proof.upper) < exact;
  return !isBelow && !isAbove;
}

void Tally::CompareElement(double value, const ElementProof& proof,
                           const std::optional<Rational>& exact) {
  Compare(HeldDigits(value, proof), Rational(value), kDoubleDigits, exact);
  const std::string wide = CStr(value);
  const std::string narrow = CStrSingle(value);
  Compare(HeldDigits(wide, kWideDigits, value, proof), testing::FromText(wide), kWideDigits, exact);
  Compare(HeldDigits(narrow, kNarrowDigits, value, proof), testing::FromText(narrow), kNarrowDigits,
          exact);
  if (exact && !Contains(proof, *exact) && !IsFalse() && !isEigenvalue_) {
    falsehood_ = "The enclosure is wrong. " + Describe(*question_, Rational(value), 0, 0);
  }
}

/// Every enclosure contains an eigenvalue; of several close ones any will do.
void Tally::CompareEigenvalues(const ResultProof& proofs) {
  const std::vector<testing::Eigenvalue> eigenvalues = testing::RealEigenvaluesOf(question_->a);
  for (const ElementProof& proof : proofs.elements) {
    const bool isRight = std::any_of(eigenvalues.begin(), eigenvalues.end(),
                                     [&](const auto& one) { return Contains(proof, one.value); });
    if (proof.IsEnclosed() && !isRight && !IsFalse()) {
      falsehood_ = "No eigenvalue there. " + Describe(*question_, Rational(proof.lower), 0, 0);
    }
  }
}

void Tally::Compare(const ProofQuestion& question, const ProofAnswer& answer) {
  question_ = &question;
  const std::vector<Truth> truths = testing::TruthOf(question, answer);
  if (question.task == ProofTask::kEigen) CompareEigenvalues(answer.results[0]);
  for (std::size_t k = 0; k < truths.size(); ++k) {
    const Matrix& computed = question.computed[k];
    isEigenvalue_ = question.task == ProofTask::kEigen && k == 0;
    for (std::size_t e = 0; e < computed.Size(); ++e) {
      CompareElement(computed.Data()[e], answer.results[k].elements[e], truths[k][e]);
    }
  }
}

/// Changes some elements in one of their digits.
void Falsify(testing::Dice& dice, ProofQuestion& question) {
  for (Matrix& computed : question.computed) {
    for (std::size_t e = 0; e < computed.Size(); ++e) {
      if (dice.Chance(0.7)) continue;
      double& value = computed.Data()[e];
      const double changed =
          value * (1 + dice.Integer(1, 9) * std::pow(10.0, -dice.Integer(1, 17)));
      if (std::isfinite(changed)) value = changed;
    }
  }
}

class ClaimsTest : public ::testing::TestWithParam<ProofTask> {};

TEST_P(ClaimsTest, AreNeverFalseAndSharpBesides) {
  testing::QuestionSource source(GetParam(), 7000 + static_cast<int>(GetParam()), 12);
  Tally tally;
  while (tally.Count() < ClaimsOf(GetParam()) && !tally.IsFalse()) {
    auto question = source.Next();
    if (!question) continue;
    if (source.Randomness().Chance(0.4)) Falsify(source.Randomness(), *question);
    ProofLimits limits;
    limits.seconds = 60;
    const ProofAnswer answer = Prove(*question, limits);
    ASSERT_NE(answer.outcome, ProofOutcome::kCannotBeProved);
    ASSERT_NE(answer.outcome, ProofOutcome::kDoesNotFit);
    tally.Compare(*question, answer);
  }
  EXPECT_FALSE(tally.IsFalse()) << tally.Falsehood();
  EXPECT_LE(tally.Unsharp(), tally.Count() / 1000) << tally.ExampleOfUnsharp();
  EXPECT_GT(tally.Held(), tally.Count());  // Something is claimed at all.
  std::printf("%ld claims checked, %ld told more than a digit too few\n", tally.Count(),
              tally.Unsharp());
}

INSTANTIATE_TEST_SUITE_P(All, ClaimsTest, ::testing::ValuesIn(testing::kDigitTasks),
                         [](const auto& task) { return testing::NameOf(task.param); });

}  // namespace
}  // namespace qmx
