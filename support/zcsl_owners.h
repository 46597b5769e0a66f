/*
 * zcsl_owners.h: the one move-only owner of the playlist library. It holds a pointer and the
 * function that releases it, so that an early return leaks nothing. No larger than a pointer.
 * Internal.
 *
 *   zcsl_vector_owner vector;
 *   if (zvsdk_status status = zcsl_vector_create(vector.out(), 0, nullptr, nullptr)) return status;
 *   ...
 *   *output = vector.release();
 */
#ifndef ZCSL_OWNERS_H
#define ZCSL_OWNERS_H

#include <utility>

template <class T, auto Delete>
class zcsl_owner {
 public:
  zcsl_owner() = default;
  explicit zcsl_owner(T* object) : object_(object) {}
  zcsl_owner(zcsl_owner&& other) noexcept : object_(other.release()) {}
  zcsl_owner& operator=(zcsl_owner&& other) noexcept {
    reset(other.release());
    return *this;
  }
  ~zcsl_owner() { reset(); }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /* Where a create function puts a new object; what was held is released first. */
  T** out() {
    reset();
    return &object_;
  }
  /* Hands the object to the caller. */
  T* release() { return std::exchange(object_, nullptr); }
  /* Releases what is held and takes `object`. */
  void reset(T* object = nullptr) {
    if (T* old = std::exchange(object_, object)) Delete(old);
  }

 private:
  T* object_ = nullptr;
};

#endif
