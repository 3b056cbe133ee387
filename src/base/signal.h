#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tessary {

/// Keeps an observer connected for as long as it lives. May outlive what it observes.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> slot) : slot_(std::move(slot)) {}

private:
    std::shared_ptr<void> slot_;
};

/// A list of observers, called in the order of their connection, on the thread that emits.
/// An observer may connect and disconnect others, itself included, while it is called.
template <class... Args>
class Signal {
public:
    using Observer = std::function<void(const Args&...)>;

    Subscription connect(Observer observer) {
        auto slot = std::make_shared<Observer>(std::move(observer));
        slots_.push_back(slot);
        return Subscription(std::move(slot));
    }

    void emit(const Args&... args) {
        std::erase_if(slots_, [](const std::weak_ptr<Observer>& slot) { return slot.expired(); });
        const std::vector<std::weak_ptr<Observer>> present = slots_;
        for (const std::weak_ptr<Observer>& slot : present) {
            if (const std::shared_ptr<Observer> observer = slot.lock()) (*observer)(args...);
        }
    }

private:
    std::vector<std::weak_ptr<Observer>> slots_;
};

}  // namespace tessary
