// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace qmx {

template <typename Signature>
class FunctionRef;

/// Something callable that lives longer than the call it is handed to. Unlike an owning function it
/// takes no memory of its own, so that handing it on cannot fail.
template <typename Result, typename... Arguments>
class FunctionRef<Result(Arguments...)> {
 public:
  template <typename Callable>
  requires(!std::is_same_v<std::remove_cvref_t<Callable>, FunctionRef>)
      // A lambda is handed over as it is; the constraint leaves copies alone.
      FunctionRef(Callable&& callable) {  // NOLINT(bugprone-forwarding-reference-overload)
    using Target = std::remove_reference_t<Callable>;
    if constexpr (std::is_function_v<Target>) {
      object_ = reinterpret_cast<void*>(&callable);
      call_ = [](void* object, Arguments... arguments) -> Result {
        return static_cast<Result>(
            reinterpret_cast<Target*>(object)(std::forward<Arguments>(arguments)...));
      };
    } else {
      object_ = const_cast<void*>(static_cast<const void*>(std::addressof(callable)));
      call_ = [](void* object, Arguments... arguments) -> Result {
        return static_cast<Result>(
            (*static_cast<Target*>(object))(std::forward<Arguments>(arguments)...));
      };
    }
  }

  Result operator()(Arguments... arguments) const {
    return call_(object_, std::forward<Arguments>(arguments)...);
  }

 private:
  void* object_;
  Result (*call_)(void*, Arguments...);
};

}  // namespace qmx
