// SPDX-License-Identifier: MIT
#include "exchange/apart.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "support/core_memory.h"

namespace qmx {
namespace {

constexpr std::size_t kMegabyte = 1 << 20;

/// What a process apart sends before it ends, or "nothing".
std::string Said(const std::function<void(const Apart::Channel&)>& work) {
  const Apart apart(work, 64 * kMegabyte);
  char said[3] = {};
  return apart.Receive(said, 2) ? said : "nothing";
}

TEST(Apart, SaysWhatItFound) {
  EXPECT_EQ(Said([](const Apart::Channel& channel) { channel.Send("ok", 2); }), "ok");
}

TEST(Apart, MayEndAsItLikes) {
  using Channel = Apart::Channel;
  EXPECT_EQ(Said([](const Channel&) {}), "nothing");
  EXPECT_EQ(Said([](const Channel& channel) { channel.Send("o", 1); }), "nothing");
  EXPECT_EQ(Said([](const Channel&) { raise(SIGSEGV); }), "nothing");
  EXPECT_EQ(Said([](const Channel&) { std::abort(); }), "nothing");
  EXPECT_EQ(Said([](const Channel&) { throw std::runtime_error("apart"); }), "nothing");
}

TEST(Apart, GetsNoMoreMemoryThanItMayHave) {
  if (!test::kMemoryIsItsOwn) GTEST_SKIP() << "the sanitizer has memory of its own";
  const auto take = [](std::size_t size) {
    return Said([size](const Apart::Channel& channel) {
      void* memory = std::malloc(size);
      channel.Send(memory == nullptr ? "no" : "ok", 2);
    });
  };
  EXPECT_EQ(take(16 * kMegabyte), "ok");
  EXPECT_EQ(take(256 * kMegabyte), "no");
}

TEST(Apart, IsEndedWhereNobodyWaitsForIt) {
  const Apart apart(
      [](const Apart::Channel& channel) {
        for (;;) channel.Send("x", 1);
      },
      kMegabyte);
  char said = 0;
  EXPECT_TRUE(apart.Receive(&said, 1));
}

}  // namespace
}  // namespace qmx
