// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <unistd.h>

#include <QProcess>
#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include "desktop/printing_tools.h"

namespace qmx::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kServer = "/usr/sbin/cupsd";

bool WaitFor(const std::function<bool()>& condition) {
  for (int i = 0; i < 200; ++i) {
    if (condition()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

/// A print server of the test's own, in a folder of its own, with one default printer that keeps
/// each job in a file.
class PrintServer {
 public:
  PrintServer() {
    server_.start("bash", {QMX_PRINT_SERVER, QString::fromStdString(folder_.Path("."))});
  }
  PrintServer(const PrintServer&) = delete;
  PrintServer& operator=(const PrintServer&) = delete;
  ~PrintServer() {
    server_.terminate();
    server_.waitForFinished();
  }

  bool Start() const {
    return RunProgram({"bash", QMX_PRINT_SERVER, "--printer", folder_.Path(".")}).status == 0;
  }
  Outcome Run(const std::vector<std::string>& arguments) const {
    return RunProgram(arguments, {}, {"CUPS_SERVER=" + Address()});
  }
  std::string Address() const { return folder_.Path("run/sock"); }
  std::string Job() const { return folder_.Path("out/job"); }
  /// The backend writes this file last.
  bool JobArrived() const {
    return WaitFor([this] { return fs::exists(folder_.Path("out/title")); });
  }
  std::string Title() const { return ContentOf(folder_.Path("out/title")); }
  std::string Log() const { return ContentOf(folder_.Path("error")); }

 private:
  Folder folder_;
  QProcess server_;
};

class CupsPrinting : public ::testing::Test {
 protected:
  void SetUp() override {
    if (access(kServer, X_OK) != 0) GTEST_SKIP() << "no print server (package cups)";
    if (geteuid() != 0) GTEST_SKIP() << "only root can start a print server";
  }
};

TEST_F(CupsPrinting, SendsTheJobToTheDefaultPrinter) {
  PrintServer server;
  ASSERT_TRUE(server.Start()) << server.Log();
  const std::vector<std::string> lines{"MATRIX [A]:", "A( 1 , 1 )= 1", "A( 1 , 2 )=-2.5",
                                       "EVL( 3 )= 4                            EVC( 1 , 3 )= .6"};
  const Outcome outcome = PrintLines(lines, "Courier New", "", server.Address());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "not asked\n");
  ASSERT_TRUE(server.JobArrived()) << server.Log();
  EXPECT_EQ(server.Title(), "Orvane");
  std::vector<std::string> arrived = LinesOfPdf(server.Job());
  arrived.resize(lines.size());
  EXPECT_EQ(arrived, lines);
}

TEST_F(CupsPrinting, OfALongDocumentThatIsStoppedNothingArrives) {
  PrintServer server;
  ASSERT_TRUE(server.Start()) << server.Log();
  const std::vector<std::string> many(2000, "A line of a long document");
  EXPECT_EQ(PrintLines(many, "Courier New", "", server.Address(), 5).output, "stopped\n");
  EXPECT_EQ(PrintLines({"Short"}, "Courier New", "", server.Address()).status, 0);
  ASSERT_TRUE(server.JobArrived()) << server.Log();
  EXPECT_EQ(LinesOfPdf(server.Job()).front(), "Short");
}

TEST_F(CupsPrinting, AJobThatThePrinterRejectsIsAPrinterError) {
  PrintServer server;
  ASSERT_TRUE(server.Start()) << server.Log();
  ASSERT_EQ(server.Run({"cupsreject", "keeper"}).status, 0);
  EXPECT_EQ(PrintLines({"A line"}, "Courier New", "", server.Address()).status, 82);
}

}  // namespace
}  // namespace qmx::test
