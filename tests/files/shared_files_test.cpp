// SPDX-License-Identifier: MIT
// Many numbers are written and read side by side: the same bytes, the same numbers, and the same
// place where a reading ends, as one after the other.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "base/team.h"
#include "files/field_scanner.h"
#include "files/record_writer.h"

namespace qmx {
namespace {

constexpr std::size_t kMany = 60000;

class SharedFiles : public testing::TestWithParam<int> {
 protected:
  Team team{GetParam()};
  UseTeam use{team};
};

INSTANTIATE_TEST_SUITE_P(Members, SharedFiles, testing::Values(1, 2, 3, 7, 64));

Matrix Numbers(std::size_t count) {
  std::mt19937_64 random(91);
  std::uniform_real_distribution<double> uniform(-1e5, 1e5);
  Matrix values(1, static_cast<int>(count));
  for (std::size_t k = 0; k < count; ++k)
    values.Data()[k] = k % 3 == 0 ? static_cast<double>(k) : uniform(random);
  return values;
}

TEST_P(SharedFiles, TheBytesAreThoseOfOneRecordAfterTheOther) {
  for (const std::size_t count : {kMany, kMany + 4095, std::size_t{16384}, std::size_t{16385}}) {
    const Matrix values = Numbers(count);
    RecordWriter single;
    for (std::size_t k = 0; k < count; ++k) single.PrintNumber(values.Data()[k]);
    RecordWriter whole;
    whole.PrintNumbers(values);
    ASSERT_EQ(whole.Take(), single.Take()) << count;
  }
}

/// What is left of a text behind `count` numbers, and how many of them there were.
struct Reading {
  std::vector<double> values;
  std::size_t read;
  int line;
  std::string problem;
  bool operator==(const Reading&) const = default;
};

Reading Finish(FieldScanner& scanner, std::vector<double> values, std::size_t read) {
  values.resize(read);
  const int line = read == 0 ? 0 : scanner.LineOfLast();
  scanner.ReadEmptyLine();
  scanner.Refuse("more");
  return {std::move(values), read, line, scanner.ProblemText()};
}

Reading OneByOne(const std::string& bytes, std::size_t count) {
  FieldScanner scanner(bytes);
  std::vector<double> values(count);
  std::size_t read = 0;
  while (read < count && scanner.ReadNumber(values[read])) ++read;
  return Finish(scanner, std::move(values), read);
}

Reading SideBySide(const std::string& bytes, std::size_t count) {
  FieldScanner scanner(bytes);
  std::vector<double> values(count);
  const std::size_t read = scanner.ReadNumbers(values.data(), count);
  return Finish(scanner, std::move(values), read);
}

/// Numbers in records of every kind: one or several in a line, with blanks, commas, empty lines.
std::string AnyText(std::size_t numbers, const char* lineEnd) {
  std::mt19937 random(17);
  std::string text;
  for (std::size_t k = 0; k < numbers; ++k) {
    text += std::to_string(static_cast<int>(random() % 2000000) - 1000000) + "." +
            std::to_string(random() % 1000);
    switch (random() % 8) {
      case 0:
        text += ",";
        break;
      case 1:
        text += " \t";
        break;
      case 2:
        text += std::string(",") + lineEnd + " " + lineEnd;
        break;
      default:
        text += std::string(" ") + lineEnd;
    }
  }
  return text + lineEnd;
}

TEST_P(SharedFiles, TheNumbersAndThePlaceWhereTheyEndAreThoseOfOneAfterTheOther) {
  for (const char* lineEnd : {"\r\n", "\n"}) {
    const std::string text = AnyText(kMany, lineEnd);
    for (const std::size_t count : {kMany, kMany - 1, kMany + 1, kMany / 2, std::size_t{16384}}) {
      ASSERT_EQ(SideBySide(text, count), OneByOne(text, count)) << count;
      ASSERT_EQ(SideBySide(text + lineEnd + "#TRUE#" + lineEnd, count),
                OneByOne(text + lineEnd + "#TRUE#" + lineEnd, count))
          << count;
    }
  }
}

TEST_P(SharedFiles, WhatIsNoNumberEndsTheReadingAtItsPlace) {
  const std::string text = AnyText(kMany, "\r\n");
  std::mt19937 random(23);
  for (const char* bad : {"x", "#", "\r", "1e999", ",,", "- 1"}) {
    for (int round = 0; round < 6; ++round) {
      std::string damaged = text;
      damaged.insert(random() % damaged.size(), bad);
      ASSERT_EQ(SideBySide(damaged, kMany), OneByOne(damaged, kMany)) << bad;
      damaged.resize(random() % damaged.size());
      ASSERT_EQ(SideBySide(damaged, kMany), OneByOne(damaged, kMany)) << bad << ", cut";
    }
  }
}

TEST_P(SharedFiles, AStopIsHeardWhileNumbersAreWrittenAndRead) {
  struct Stopper : Progress {
    int reports = 0;
    void Report(double) override {
      if (++reports == 2) throw Stopped();
    }
  };
  const Matrix values = Numbers(2000000);
  Stopper writing;
  RecordWriter writer(values.Size(), writing);
  EXPECT_THROW(writer.PrintNumbers(values), Stopped);
  const std::string text = AnyText(500000, "\n");
  Stopper reading;
  FieldScanner scanner(text, SystemMemory(), reading);
  std::vector<double> read(500000);
  EXPECT_THROW(scanner.ReadNumbers(read.data(), read.size()), Stopped);
}

}  // namespace
}  // namespace qmx
