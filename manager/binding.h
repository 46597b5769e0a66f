/*
 * binding.h: a function of the application's own with its context, exchanged as one piece while
 * other threads may be calling it. Reading takes no lock; a binding that was replaced is kept,
 * because a caller may still hold it.
 */
#ifndef BINDING_H
#define BINDING_H

#include <atomic>
#include <deque>
#include <mutex>

namespace manager {

template <class Function>
class binding {
 public:
  struct target {
    Function function;
    void* context;
  };

  /* Null removes the binding. */
  void set(Function function, void* context) {
    std::lock_guard lock(m_mutex);
    const target* next =
        function != nullptr ? &m_targets.emplace_back(target{function, context}) : nullptr;
    m_current.store(next, std::memory_order_release);
  }

  /* Null when nothing is bound. */
  const target* get() const noexcept { return m_current.load(std::memory_order_acquire); }

 private:
  std::atomic<const target*> m_current{nullptr};
  std::mutex m_mutex;
  std::deque<target> m_targets;  // guarded by m_mutex
};

}  // namespace manager

#endif
