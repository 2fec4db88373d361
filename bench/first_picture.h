// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <string>

namespace qmx::bench {

/// Starts programs on the display and watches from outside, through the display's server, when they
/// have painted their first window.
class FirstPicture {
 public:
  /// Ends the process with a message where there is no display.
  FirstPicture();
  ~FirstPicture();
  FirstPicture(const FirstPicture&) = delete;
  FirstPicture& operator=(const FirstPicture&) = delete;

  /// Runs a program without arguments, ends it once its window shows texts, and returns the seconds
  /// in between. The picture is looked at every half millisecond.
  double SecondsOf(const std::string& program);

 private:
  xcb_window_t WaitForWindow();
  bool ShowsTexts(xcb_window_t window);
  void ForgetEvents();

  xcb_connection_t* display_;
};

}  // namespace qmx::bench
