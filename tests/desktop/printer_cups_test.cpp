// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <thread>

#include "desktop/printing_tools.h"

namespace qmx::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kServer = "/usr/sbin/cupsd";
constexpr const char* kParts = "/usr/lib/cups";

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
    for (const char* name : {"root", "state", "cache", "spool", "out", "run", "bin"})
      fs::create_directory(folder_.Path(name));
    MakeParts();
    WriteConfiguration();
    pid_ = fork();
    if (pid_ == 0) {
      const std::string c = folder_.Path("cupsd.conf");
      const std::string s = folder_.Path("cups-files.conf");
      execl(kServer, kServer, "-f", "-c", c.c_str(), "-s", s.c_str(), nullptr);
      _exit(127);
    }
  }
  PrintServer(const PrintServer&) = delete;
  PrintServer& operator=(const PrintServer&) = delete;
  ~PrintServer() {
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
  }

  bool Start() {
    return WaitFor([this] {
             return Run({"lpstat", "-r"}).output.find("not") == std::string::npos &&
                    fs::exists(Address());
           }) &&
           Run({"lpadmin", "-p", "keeper", "-E", "-v", "keep:/", "-m", "raw"}).status == 0 &&
           Run({"lpadmin", "-d", "keeper"}).status == 0;
  }
  Outcome Run(const std::vector<std::string>& arguments) const {
    return RunProgram(arguments, {}, {"CUPS_SERVER=" + Address()});
  }
  std::string Address() const { return folder_.Path("run/sock"); }
  std::string Job() const { return folder_.Path("out/job.pdf"); }
  /// The backend writes this file last.
  bool JobArrived() const {
    return WaitFor([this] { return fs::exists(folder_.Path("out/title")); });
  }
  std::string Title() const { return ContentOf(folder_.Path("out/title")); }
  std::string Log() const { return ContentOf(folder_.Path("error")); }

 private:
  /// The server's own parts, apart from the one backend.
  void MakeParts() const {
    for (const auto& entry : fs::directory_iterator(kParts)) {
      if (entry.path().filename() != "backend")
        fs::create_symlink(entry.path(), folder_.Path("bin/" + entry.path().filename().string()));
    }
    fs::create_directory(folder_.Path("bin/backend"));
    const std::string backend = folder_.Path("bin/backend/keep");
    const std::string out = folder_.Path("out");
    Put(backend,
        "#!/bin/sh\n"
        "if [ $# -eq 0 ]; then echo 'direct keep:/ \"keep\" \"keep\"'; exit 0; fi\n"
        "cat ${6:+\"$6\"} > " +
            out +
            "/job.pdf\n"
            "printf '%s' \"$3\" > " +
            out +
            "/title.part\n"
            "mv " +
            out + "/title.part " + out + "/title\n");
    chmod(backend.c_str(), 0700);
  }
  void WriteConfiguration() const {
    Put(folder_.Path("cups-files.conf"),
        "ServerRoot " + folder_.Path("root") + "\nStateDir " + folder_.Path("state") +
            "\nCacheDir " + folder_.Path("cache") + "\nRequestRoot " + folder_.Path("spool") +
            "\nServerBin " + folder_.Path("bin") +
            "\nDataDir /usr/share/cups\nPrintcap\nAccessLog " + folder_.Path("access") +
            "\nErrorLog " + folder_.Path("error") + "\nPageLog " + folder_.Path("page") +
            "\nUser lp\nGroup lp\nSystemGroup root\n");
    Put(folder_.Path("cupsd.conf"),
        "Listen " + Address() +
            "\nBrowsing Off\nDefaultAuthType None\nWebInterface No\n"
            "<Location />\nAllow all\n</Location>\n<Location /admin>\nAllow all\n</Location>\n"
            "<Policy default>\n<Limit All>\nAllow all\n</Limit>\n</Policy>\n");
  }

  Folder folder_;
  pid_t pid_ = -1;
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
