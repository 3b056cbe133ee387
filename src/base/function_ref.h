#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace tessary {

template <class Signature>
class FunctionRef;

/// A callable borrowed for the length of one call: no allocation, no ownership. Never keep one.
template <class Result, class... Args>
class FunctionRef<Result(Args...)> {
public:
    template <class F>
        requires(!std::is_same_v<std::remove_cvref_t<F>, FunctionRef> && std::is_invocable_r_v<Result, F&, Args...>)
    FunctionRef(F&& function)  // NOLINT(google-explicit-constructor): stands for the callable itself
        : object_(const_cast<void*>(static_cast<const void*>(std::addressof(function)))),
          call_([](void* object, Args... args) -> Result {
              return (*static_cast<std::remove_reference_t<F>*>(object))(std::forward<Args>(args)...);
          }) {}

    Result operator()(Args... args) const { return call_(object_, std::forward<Args>(args)...); }

private:
    void* object_;
    Result (*call_)(void*, Args...);
};

}  // namespace tessary
