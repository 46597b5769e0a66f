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
    std::lock_guard lock(m_mutex);
    if (function != nullptr) m_newest = new target{function, context, m_newest};
    m_current.store(function != nullptr ? m_newest : nullptr, std::memory_order_release);
  }

  /* Null when nothing is bound. */
  const target* get() const noexcept { return m_current.load(std::memory_order_acquire); }

 private:
  std::atomic<const target*> m_current{nullptr};
  std::mutex m_mutex;
  const target* m_newest = nullptr;  // guarded by m_mutex; all that were ever bound
};

}  // namespace manager

#endif
