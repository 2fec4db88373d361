// SPDX-License-Identifier: MIT
#include "files/record_writer.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "base/number_text.h"
#include "files/field_scanner.h"

namespace qmx {
namespace {

TEST(RecordWriter, SeparatesTheValuesOfADelimitedRecordByCommas) {
  RecordWriter writer;
  writer.Flag(true);
  writer.Flag(false);
  writer.EndRecord();
  writer.Integer(3);
  writer.Integer(-1);
  writer.EndRecord();
  writer.Number(0.001);
  writer.Number(-0.5);
  writer.Number(100);
  writer.EndRecord();
  EXPECT_EQ(writer.Take(), "#TRUE#,#FALSE#\r\n3,-1\r\n.001,-.5,100\r\n");
}

TEST(RecordWriter, PutsBlanksAroundTheValueOfAPrintRecord) {
  RecordWriter writer;
  writer.PrintNumber(2.5);
  writer.PrintNumber(-2.5);
  writer.PrintNumber(0.5);
  writer.PrintNumber(-0.0);
  writer.PrintNumber(1e-20);
  writer.PrintInteger(7);
  writer.PrintInteger(-7);
  writer.PrintText("Positive definite");
  EXPECT_EQ(writer.Take(),
            " 2.5 \r\n-2.5 \r\n .5 \r\n 0 \r\n 1E-20 \r\n 7 \r\n-7 \r\nPositive definite\r\n");
}

TEST(RecordWriter, WritesAsManyDigitsAsANumberNeeds) {
  RecordWriter writer;
  writer.PrintNumber(1.0 / 3);
  writer.PrintNumber(0.1);
  writer.PrintNumber(0.1 + 0.2);
  writer.Number(1.0 / 3);
  writer.EndRecord();
  EXPECT_EQ(writer.Take(),
            " .3333333333333333 \r\n .1 \r\n .30000000000000004 \r\n.3333333333333333\r\n");
}

TEST(RecordWriter, WritesAMatrixOfAnySizeElementByElement) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> uniform(-1e5, 1e5);
  Matrix values(37, 41);
  RecordWriter single;
  for (int i = 1; i <= 37; ++i) {
    for (int j = 1; j <= 41; ++j) {
      values(i, j) = (i + j) % 5 == 0 ? i - j : uniform(random);
      single.PrintNumber(values(i, j));
    }
  }
  RecordWriter whole;
  whole.PrintNumbers(values);
  EXPECT_EQ(whole.Take(), single.Take());
}

TEST(RecordWriter, TellsHowFarItIsOnceInManyNumbers) {
  struct Recorder : Progress {
    std::vector<double> told;
    void Report(double fraction) override { told.push_back(fraction); }
  } progress;
  const Matrix values(256, 256);
  RecordWriter writer(values.Size(), progress);
  for (int i = 1; i <= 256; ++i) {
    for (int j = 1; j <= 256; ++j) writer.PrintNumber(values(i, j));
  }
  EXPECT_EQ(progress.told, (std::vector<double>{0.25, 0.5, 0.75, 1}));
}

TEST(RecordWriter, ReplacesWhatIsNoNumber) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  RecordWriter writer;
  writer.PrintNumber(kInfinity);
  writer.Number(-kInfinity);
  writer.Number(std::numeric_limits<double>::quiet_NaN());
  writer.EndRecord();
  EXPECT_EQ(writer.Take(), " 1.7976931348623157E+308 \r\n-1.7976931348623157E+308,0\r\n");
}

}  // namespace
}  // namespace qmx
