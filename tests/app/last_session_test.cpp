// SPDX-License-Identifier: MIT
#include "desktop/last_session.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <fstream>

#include "commands/lifecycle.h"
#include "desktop/file_store_system.h"
#include "support/desktop_bench.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class LastSessionTest : public ::testing::Test {
 protected:
  QTemporaryDir home;
  std::string folder = home.path().toStdString() + "/";
  std::unique_ptr<FileStore> files = MakeSystemFileStore();
  std::string state = "first";
  std::vector<std::string> problems;

  std::unique_ptr<LastSession> Start() {
    return std::make_unique<LastSession>(
        folder, *files,
        [this]() -> LastSession::Compose { return [held = state] { return held; }; },
        [this](const std::string& problem) { problems.push_back(problem); });
  }
  QStringList Files() const { return QDir(home.path()).entryList({"*.qmx"}, QDir::Files); }
  static std::string Content(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void WaitForFile() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Files().isEmpty(); }, 3000));
    QTest::qWait(50);
  }
};

TEST_F(LastSessionTest, AChangeIsWrittenSoonAndFoundByTheNextRun) {
  {
    auto run = Start();
    EXPECT_EQ(run->Latest(), "");
    run->Changed();
    WaitForFile();
    state = "second";
    run->Changed();
    run->End();
  }
  const auto next = Start();
  EXPECT_EQ(Content(next->Latest()), "second");
  EXPECT_FALSE(next->WasCutOff());
}

TEST_F(LastSessionTest, ARunWithoutChangesLeavesNothing) {
  Start()->End();
  EXPECT_TRUE(Files().isEmpty());
}

TEST_F(LastSessionTest, IsWrittenAtMostEveryTwoSeconds) {
  auto run = Start();
  run->Changed();
  WaitForFile();
  const std::string name = folder + Files().front().toStdString();
  state = "second";
  run->Changed();
  QTest::qWait(1000);
  EXPECT_EQ(Content(name), "first");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Content(name) == "second"; }, 20000));
}

TEST_F(LastSessionTest, TwoRunsAtOnceKeepTwoFiles) {
  auto one = Start();
  one->Changed();
  WaitForFile();
  auto other = Start();
  EXPECT_EQ(other->Latest(), "") << "the run of that file goes on";
  state = "other";
  other->Changed();
  EXPECT_TRUE(QTest::qWaitFor([this] { return Files().size() == 2; }, 3000));
}

TEST_F(LastSessionTest, TheLastFiveAreKept) {
  for (int i = 0; i < 8; ++i) {
    auto run = Start();
    state = std::to_string(i);
    run->Changed();
    run->End();
    QTest::qWait(3);
  }
  EXPECT_EQ(Files().size(), 5);
  EXPECT_EQ(Content(Start()->Latest()), "7");
}

TEST_F(LastSessionTest, AFileThatIsNoProjectIsOfferedNoMore) {
  {
    auto run = Start();
    run->Changed();
    run->End();
  }
  auto next = Start();
  next->Refuse();
  EXPECT_EQ(next->Latest(), "");
  EXPECT_EQ(Start()->Latest(), "");
}

TEST_F(LastSessionTest, WhatCannotBeWrittenIsToldOnce) {
  auto run = Start();
  home.remove();
  run->Changed();
  EXPECT_TRUE(QTest::qWaitFor([this] { return !problems.empty(); }, 3000));
  run->Changed();
  run->End();
  QTest::qWait(100);
  EXPECT_EQ(problems.size(), 1U);
}

TEST_F(LastSessionTest, WithoutAFolderNothingIsKept) {
  folder.clear();
  auto run = Start();
  run->Changed();
  run->End();
  EXPECT_TRUE(problems.empty());
}

/// Run as a program of its own, which is killed: it types numbers and tells each when it stands.
class KilledRun : public Desktop {};

TEST_F(KilledRun, DISABLED_TypesUntilItIsKilled) {
  Enter(kSlotA, 1, 1, {"1"});
  for (int number = 1;; ++number) {
    program.Runner().EndCell();
    program.Runner().WriteCell(kSlotA, 1, 1, std::to_string(number));
    std::printf("%d %lld\n", number, QDateTime::currentMSecsSinceEpoch());
    std::fflush(stdout);
    QTest::qWait(20);
  }
}

TEST_F(LastSessionTest, AKilledProgramLosesAtMostTwoSeconds) {
  for (const int life : {2600, 3900, 5300}) {
    QTemporaryDir place;
    QProcess program;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QMX_TEST_STATE", place.path());
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_also_run_disabled_tests", "--gtest_filter=KilledRun.*"});
    ASSERT_TRUE(program.waitForStarted());
    QTest::qWait(life);
    const qint64 end = QDateTime::currentMSecsSinceEpoch();
    program.kill();
    program.waitForFinished();
    int oldest = 0;
    for (const QByteArray& line : program.readAllStandardOutput().split('\n')) {
      const QList<QByteArray> words = line.split(' ');
      const bool isState = words.size() == 2 && words[0].toInt() > 0;
      // Two seconds, and what writing takes on a busy machine.
      if (isState && words[1].toLongLong() < end - 2400) oldest = words[0].toInt();
    }
    folder = place.path().toStdString() + "/orvane/";
    const auto next = Start();
    EXPECT_TRUE(next->WasCutOff()) << life;
    const std::string kept = Content(next->Latest());
    const std::size_t at = kept.find("1,1\r\n ");
    ASSERT_NE(at, std::string::npos) << kept;
    EXPECT_GE(std::stoi(kept.substr(at + 6)), oldest) << life;
  }
}

class LastSessionMenu : public Desktop {
 protected:
  QString folder = QString::fromStdString(StateFolder());
};

TEST_F(LastSessionMenu, ASettingThatAProjectHoldsIsKeptToo) {
  Enter(kSlotA, 2, 2, {"4", "1", "1", "4"});
  Click(cmdTask(kTaskEigen));
  const auto newest = [this] {
    const QStringList kept = QDir(folder).entryList({"*.qmx"}, QDir::Files, QDir::Name);
    std::ifstream file((folder + kept.last()).toStdString(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  QTest::qWait(2500);
  ASSERT_EQ(newest().find(",77,"), std::string::npos);
  TypeInto(txtMaxcy, "77");
  EXPECT_TRUE(QTest::qWaitFor([&] { return newest().find(",77,") != std::string::npos; }, 5000));
}

TEST_F(LastSessionMenu, OpensWhatTheLastRunHeldAsAStepWithoutAFile) {
  QDir(folder).removeRecursively();
  const auto disk = MakeSystemFileStore();
  {
    Program before({*disk, printer, random, clock, memory}, settings);
    before.Start("");
    before.Runner().Step("Create", [](Context& context) {
      context.panel.SetText(txtRowsA, "1");
      context.panel.SetText(txtColsA, "1");
      CreateOperand(context, kSlotA);
    });
    before.Runner().WriteCell(kSlotA, 1, 1, "42");
    before.MainWindow().close();
  }
  Program next({*disk, printer, random, clock, memory}, settings);
  next.Start("");
  ASSERT_TRUE(next.MainWindow().Action("mnuLastSession")->isEnabled());
  next.MainWindow().Action("mnuLastSession")->trigger();
  EXPECT_EQ(next.State().A().array(1, 1), 42);
  EXPECT_EQ(next.State().currentFileName, "");
  EXPECT_EQ(next.Runner().Steps().UndoName(), "Last session");
  next.Runner().Undo();
  EXPECT_FALSE(next.State().ACreated);
}

}  // namespace
}  // namespace qmx::test
