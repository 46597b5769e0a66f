/*
 * formatted_text.h: a text made from a printf format. Short texts live in the object itself, longer
 * ones in a block; without memory the text stays cut. A null format makes an empty text.
 */
#ifndef FORMATTED_TEXT_H
#define FORMATTED_TEXT_H

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <new>

namespace manager {

class formatted_text {
 public:
  formatted_text(const char* format, va_list arguments) noexcept {
    if (format == nullptr) return;
    va_list again;
    va_copy(again, arguments);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the caller has begun the arguments
    const int length = std::vsnprintf(line_, sizeof line_, format, arguments);
    if (length >= static_cast<int>(sizeof line_)) {
      const size_t size = static_cast<size_t>(length) + 1;
      longer_.reset(new (std::nothrow) char[size]);
      if (longer_) std::vsnprintf(longer_.get(), size, format, again);
    }
    va_end(again);
  }

  const char* c_str() const { return longer_ ? longer_.get() : line_; }

 private:
  char line_[512] = {};
  std::unique_ptr<char[]> longer_;
};

}  // namespace manager

#endif
