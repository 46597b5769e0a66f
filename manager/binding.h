/*
 * binding.h: a function of the application's own with its context, exchanged as one piece while
 * other threads may be calling it. Reading takes no lock; a binding that was replaced is kept,
 * because a caller may still hold it. Nothing is destroyed at exit, when other threads may still
 * call.
 */
#ifndef BINDING_H
#define BINDING_H

#include <atomic>
#include <mutex>

namespace manager {

template <class Function>
class binding {
 public:
  struct target {
    Function function;
    void* context;
    const target* before;
  };

  /* Null removes the binding. */
  void set(Function function, void* context) {
    std::lock_guard lock(mutex_);
    if (function != nullptr) newest_ = new target{function, context, newest_};
    current_.store(function != nullptr ? newest_ : nullptr, std::memory_order_release);
  }

  /* Null when nothing is bound. */
  const target* get() const noexcept { return current_.load(std::memory_order_acquire); }

 private:
  std::atomic<const target*> current_{nullptr};
  std::mutex mutex_;
  const target* newest_ = nullptr;  // guarded by mutex_; all that were ever bound
};

}  // namespace manager

#endif
