// SPDX-License-Identifier: MIT
#include "exchange/apart.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <exception>
#include <fstream>

#include "exchange/refusal.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QMX_SHADOWED_MEMORY
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QMX_SHADOWED_MEMORY
#endif
#endif

namespace qmx {
namespace {

constexpr rlim_t kMostSeconds = 30;

void Limit(int resource, rlim_t most) {
  rlimit limit{};
  getrlimit(resource, &limit);
  limit.rlim_cur = limit.rlim_max == RLIM_INFINITY || most < limit.rlim_max ? most : limit.rlim_max;
  setrlimit(resource, &limit);
}

#if defined(QMX_SHADOWED_MEMORY)
// A sanitizer has taken more addresses than any limit.
void LimitMemory(std::size_t) {}
#else
void LimitMemory(std::size_t memory) {
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  Limit(RLIMIT_AS, pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + memory);
}
#endif

/// What the copy of the process does; never returns.
[[noreturn]] void Work(const std::function<void(const Apart::Channel&)>& work, std::size_t memory,
                       int file) {
  for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGPIPE, SIGTERM, SIGXCPU})
    std::signal(signal, SIG_DFL);
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, standard);
  Limit(RLIMIT_CORE, 0);
  Limit(RLIMIT_CPU, kMostSeconds);
  LimitMemory(memory);
  try {
    work(Apart::Channel(file));
  } catch (const std::exception&) {
    _exit(1);
  }
  _exit(0);
}

}  // namespace

Apart::Apart(const std::function<void(const Channel&)>& work, std::size_t memory) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0)
    throw Refusal("The system gives no channel for reading the file.");
  process_ = fork();
  if (process_ == 0) Work(work, memory, ends[1]);
  close(ends[1]);
  file_ = ends[0];
  if (process_ > 0) return;
  close(file_);
  throw Refusal("The system gives no process for reading the file.");
}

Apart::~Apart() {
  close(file_);
  kill(process_, SIGKILL);
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) continue;
}

void Apart::Channel::Send(const void* bytes, std::size_t size) const {
  const char* at = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t sent = write(file_, at, size);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) _exit(1);
    at += sent;
    size -= static_cast<std::size_t>(sent);
  }
}

bool Apart::Receive(void* bytes, std::size_t size) const {
  char* at = static_cast<char*>(bytes);
  while (size > 0) {
    const ssize_t received = read(file_, at, size);
    if (received < 0 && errno == EINTR) continue;
    if (received <= 0) return false;
    at += received;
    size -= static_cast<std::size_t>(received);
  }
  return true;
}

}  // namespace qmx
