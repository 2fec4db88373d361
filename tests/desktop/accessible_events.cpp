// SPDX-License-Identifier: MIT
#include "desktop/accessible_events.h"

#include <chrono>
#include <thread>

namespace qmx::test {

AccessibleEvents::AccessibleEvents(const std::vector<std::string>& types)
    : listener_(atspi_event_listener_new(Hear, this, nullptr)), types_(types) {
  for (const std::string& type : types_)
    atspi_event_listener_register(listener_, type.c_str(), nullptr);
}

AccessibleEvents::~AccessibleEvents() {
  for (const std::string& type : types_)
    atspi_event_listener_deregister(listener_, type.c_str(), nullptr);
  g_object_unref(listener_);
}

void AccessibleEvents::Hear(AtspiEvent* event, void* self) {
  gchar* name = atspi_accessible_get_name(event->source, nullptr);
  static_cast<AccessibleEvents*>(self)->heard_.push_back(
      {event->type, name == nullptr ? "" : name, atspi_accessible_get_role(event->source, nullptr),
       event->detail1 != 0});
  g_free(name);
  g_boxed_free(ATSPI_TYPE_EVENT, event);
}

const std::vector<AccessibleEvents::Event>& AccessibleEvents::Heard() {
  while (g_main_context_iteration(nullptr, FALSE) != 0) {
  }
  return heard_;
}

void AccessibleEvents::Forget() {
  Heard();
  heard_.clear();
}

bool AccessibleEvents::WaitFor(const std::function<bool(const std::vector<Event>&)>& holds) {
  for (int tries = 0; tries < 600; ++tries) {
    if (holds(Heard())) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

}  // namespace qmx::test
