#include "platform/adapters/threads/thread_queue.h"

#include <pthread.h>

#include <utility>

namespace tessary {
namespace {

constexpr std::size_t kLongestThreadName = 15;

void nameThisThread(const std::string& name) {
    pthread_setname_np(pthread_self(), name.substr(0, kLongestThreadName).c_str());
}

}  // namespace

ThreadQueue::ThreadQueue(std::string name)
    : name_(std::move(name)), thread_([this](const std::stop_token& stop) { work(stop); }) {}

void ThreadQueue::post(std::move_only_function<void()> task) {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
    ++postedCount_;
    arrived_.notify_one();
}

void ThreadQueue::drain() {
    std::unique_lock lock(mutex_);
    finished_.wait(lock, [this, target = postedCount_] { return finishedCount_ >= target; });
}

void ThreadQueue::work(const std::stop_token& stop) {
    nameThisThread(name_);
    std::unique_lock lock(mutex_);
    while (arrived_.wait(lock, stop, [this] { return !tasks_.empty(); })) runFirst(lock);
}

void ThreadQueue::runFirst(std::unique_lock<std::mutex>& lock) {
    std::move_only_function<void()> task = std::move(tasks_.front());
    tasks_.pop_front();
    lock.unlock();
    task();
    task = nullptr;
    lock.lock();
    ++finishedCount_;
    finished_.notify_all();
}

}  // namespace tessary
