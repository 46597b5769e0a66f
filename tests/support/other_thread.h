// Work on another thread, which is waited for where its future ends.
#ifndef OTHER_THREAD_H
#define OTHER_THREAD_H

#include <chrono>
#include <future>

constexpr std::chrono::milliseconds s_shortly(30);

using other_thread = std::future<void>;

inline other_thread run(auto work) {
  return std::async(std::launch::async, work);
}

inline bool still_blocked(const other_thread& other) {
  return other.wait_for(s_shortly) == std::future_status::timeout;
}

#endif
