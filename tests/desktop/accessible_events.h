// SPDX-License-Identifier: MIT
#pragma once

#include <atspi/atspi.h>

#include <functional>
#include <string>
#include <vector>

namespace qmx::test {

/// Hears what programs tell screen readers, from its making on.
class AccessibleEvents {
 public:
  struct Event {
    std::string type;  ///< "object:state-changed:focused".
    std::string name;  ///< Of the object that it is about.
    AtspiRole role;
    bool on;  ///< The state has come, not gone.
  };

  /// Listens for events of these types.
  explicit AccessibleEvents(const std::vector<std::string>& types);
  AccessibleEvents(const AccessibleEvents&) = delete;
  AccessibleEvents& operator=(const AccessibleEvents&) = delete;
  ~AccessibleEvents();

  /// What has been heard since the last call to Forget.
  const std::vector<Event>& Heard();
  void Forget();
  /// Listens until something holds of what was heard, for as long as a slow machine may take.
  bool WaitFor(const std::function<bool(const std::vector<Event>&)>& holds);

 private:
  static void Hear(AtspiEvent* event, void* self);

  AtspiEventListener* listener_;
  std::vector<std::string> types_;
  std::vector<Event> heard_;
};

}  // namespace qmx::test
