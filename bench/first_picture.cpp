// SPDX-License-Identifier: MIT
#include "first_picture.h"

#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <thread>

namespace qmx::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kNarrowest = 300;           // Helper windows of the desktop are smaller.
constexpr int kLook = 60;                 // Pixel rows from the top: menus, headings, buttons.
constexpr std::size_t kPlainColours = 8;  // Smoothed letters have many more.

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
std::unique_ptr<Reply, Free> Own(Reply* reply) {
  return std::unique_ptr<Reply, Free>(reply);
}

}  // namespace

FirstPicture::FirstPicture() : display_(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(display_) != 0) {
    std::fprintf(stderr, "There is no display to start the program on.\n");
    std::exit(EXIT_FAILURE);
  }
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(display_)).data;
  const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(display_, screen->root, XCB_CW_EVENT_MASK, &mask);
  xcb_flush(display_);
}

FirstPicture::~FirstPicture() { xcb_disconnect(display_); }

double FirstPicture::SecondsOf(const std::string& program) {
  ForgetEvents();
  std::string name = program;
  char* arguments[] = {name.data(), nullptr};
  pid_t process = 0;
  const auto start = Clock::now();
  if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ) != 0) {
    std::fprintf(stderr, "%s cannot be started.\n", program.c_str());
    std::exit(EXIT_FAILURE);
  }
  const xcb_window_t window = WaitForWindow();
  while (!ShowsTexts(window)) std::this_thread::sleep_for(std::chrono::microseconds(500));
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  kill(process, SIGTERM);
  waitpid(process, nullptr, 0);
  return seconds;
}

xcb_window_t FirstPicture::WaitForWindow() {
  for (;;) {
    const auto event = Own(xcb_wait_for_event(display_));
    if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY) continue;
    return reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window;
  }
}

bool FirstPicture::ShowsTexts(xcb_window_t window) {
  const auto shape =
      Own(xcb_get_geometry_reply(display_, xcb_get_geometry(display_, window), nullptr));
  if (!shape || shape->width < kNarrowest || shape->height < kLook) return false;
  const auto picture = Own(xcb_get_image_reply(
      display_,
      xcb_get_image(display_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0, shape->width, kLook, ~0U),
      nullptr));
  if (!picture) return false;
  const auto* pixels = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(picture.get()));
  const std::size_t count = static_cast<std::size_t>(shape->width) * kLook;
  std::set<std::uint32_t> colours;
  for (std::size_t k = 0; k < count; k += 3) colours.insert(pixels[k]);
  return colours.size() > kPlainColours;
}

void FirstPicture::ForgetEvents() {
  while (Own(xcb_poll_for_event(display_))) {
  }
}

}  // namespace qmx::bench
