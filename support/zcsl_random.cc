// The linear congruential generator.

#include "support/zcsl_random.h"

#include <atomic>

namespace {

// Shared without a lock, on purpose: a step lost between two threads does no harm.
std::atomic<uint32_t> s_state{0x12345678};

constexpr uint32_t next_state(uint32_t state) {
  return state * 214013u + 2531011u;
}

}  // namespace

uint32_t zcsl_random_rand(uint32_t* seed) {
  const uint32_t state = next_state(seed ? *seed : s_state.load(std::memory_order_relaxed));
  if (seed) {
    *seed = state;
  } else {
    s_state.store(state, std::memory_order_relaxed);
  }
  return (state >> 16) & 0x7FFF;
}
