/*
 * zcsl_owners.h: a move-only owner for anything that a single function releases, and its names for
 * strings, accumulators and plain blocks. An early return releases what an owner still holds. No
 * larger than a pointer. Internal.
 *
 *   zcsl_accum_owner accum;
 *   if (zvsdk_status status = zcsl_string_accum_create(accum.out(), nullptr, 0)) return status;
 *   ...
 *   *output = accum.release();
 */
#ifndef ZCSL_OWNERS_H
#define ZCSL_OWNERS_H

#include <type_traits>
#include <utility>

#include "support/zcsl_accum.h"
#include "support/zcsl_string.h"
#include "zvsdk_runtime.h"

template <class T, auto deleter>
class zcsl_owner {
 public:
  zcsl_owner() = default;
  explicit zcsl_owner(T* object) : object_(object) {}
  zcsl_owner(zcsl_owner&& other) noexcept : object_(other.release()) {}
  zcsl_owner& operator=(zcsl_owner&& other) noexcept {
    reset(other.release());
    return *this;
  }
  zcsl_owner(const zcsl_owner&) = delete;
  zcsl_owner& operator=(const zcsl_owner&) = delete;
  ~zcsl_owner() { reset(); }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  std::add_lvalue_reference_t<T> operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /* Gives the object away: the caller releases it from now on. */
  [[nodiscard]] T* release() { return std::exchange(object_, nullptr); }

  /* Releases what is held and holds `object` instead. */
  void reset(T* object = nullptr) {
    if (T* old = std::exchange(object_, object)) (void)deleter(old);
  }

  /* Releases what is held; the place to hand to a function with an output parameter. */
  T** out() {
    reset();
    return &object_;
  }

 private:
  T* object_ = nullptr;
};

using zcsl_string_owner = zcsl_owner<char, zcsl_string_free>;
using zcsl_accum_owner = zcsl_owner<zcsl_accum, zcsl_string_accum_delete>;

/* A block of zcsl_memory_*. Releases the memory alone: T must need no destructor. */
template <class T>
using zcsl_block_owner = zcsl_owner<T, zcsl_memory_free>;

#endif
