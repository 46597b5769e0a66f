/*
 * zvsdk_stored_text.h: texts that are stored enciphered, such as statement templates inside a
 * library. C++20; a C program makes them with zvsdk_manager_serialization_encode. The host decodes
 * them (serialization_decode). At compile time, so that the plain text never reaches the program:
 *
 *     constexpr auto template_text = zvsdk::stored_text("GENERATE PLAYLIST LIMIT %s RESULTS");
 *     table->serialization_decode(template_text.data(), &buffer, &length);
 *
 * The form, version 1: the four characters "ZVT1", then a block in base64 (A-Z a-z 0-9 - _, without
 * padding, spare bits zero). The block is the 64-bit FNV-1a hash of the plain bytes, little-endian,
 * then the plain bytes, each combined by exclusive or with the next byte of a key stream:
 * splitmix64 that starts from the hash, each of its numbers giving eight bytes, lowest first. So
 * the hash is both the seed of the key and the proof that the text is whole, and equal texts have
 * equal forms. This keeps a text from casual sight and notices damage. It keeps no secret: all that
 * is needed to read it stands here.
 */
#ifndef ZVSDK_STORED_TEXT_H
#define ZVSDK_STORED_TEXT_H

#include "zvsdk_types.h"

#ifdef __cplusplus

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zvsdk {

enum class stored_text_state { whole, damaged, of_another_version };

namespace stored_text_detail {

inline constexpr std::string_view magic = "ZVT";
inline constexpr char version = '1';
inline constexpr std::size_t head = magic.size() + 1;
inline constexpr std::size_t hash_bytes = 8;
inline constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";

constexpr std::uint64_t hash_of(std::string_view plain) {
  std::uint64_t hash = 0xCBF29CE484222325u;
  for (const char c : plain) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
  return hash;
}

class key_stream {
 public:
  explicit constexpr key_stream(std::uint64_t seed) : state_(seed) {}

  constexpr std::uint8_t next() {
    if (left_ == 0) refill();
    --left_;
    const auto byte = static_cast<std::uint8_t>(number_);
    number_ >>= 8;
    return byte;
  }

 private:
  constexpr void refill() {
    state_ += 0x9E3779B97F4A7C15u;
    number_ = state_;
    number_ = (number_ ^ (number_ >> 30)) * 0xBF58476D1CE4E5B9u;
    number_ = (number_ ^ (number_ >> 27)) * 0x94D049BB133111EBu;
    number_ ^= number_ >> 31;
    left_ = 8;
  }

  std::uint64_t state_;
  std::uint64_t number_ = 0;
  int left_ = 0;
};

/* Bytes in, six bits a character out. */
class writer {
 public:
  explicit constexpr writer(char* out) : out_(out) {}

  constexpr void put(std::uint8_t byte) {
    bits_ = bits_ << 8 | byte;
    for (count_ += 8; count_ >= 6;) emit(bits_ >> (count_ -= 6));
  }
  constexpr void finish() {
    if (count_ > 0) emit(bits_ << (6 - count_));
  }

 private:
  constexpr void emit(std::uint32_t bits) { *out_++ = alphabet[bits & 63]; }

  char* out_;
  std::uint32_t bits_ = 0;
  int count_ = 0;
};

/* Characters in, bytes out. What is read past the end or from a foreign character counts as damage.
 */
class reader {
 public:
  explicit constexpr reader(std::string_view in) : in_(in) {}

  constexpr std::uint8_t get() {
    while (count_ < 8) take();
    count_ -= 8;
    return static_cast<std::uint8_t>(bits_ >> count_);
  }
  /* All characters were used, and the spare bits of the last one are zero. */
  constexpr bool finished() const {
    return whole_ && at_ == in_.size() && (bits_ & ((1u << count_) - 1)) == 0;
  }

 private:
  constexpr void take() {
    const std::size_t place = at_ < in_.size() ? alphabet.find(in_[at_++]) : std::string_view::npos;
    whole_ = whole_ && place != std::string_view::npos;
    bits_ = bits_ << 6 | (static_cast<std::uint32_t>(place) & 63);
    count_ += 6;
  }

  std::string_view in_;
  std::size_t at_ = 0;
  std::uint32_t bits_ = 0;
  int count_ = 0;
  bool whole_ = true;
};

}  // namespace stored_text_detail

/* The characters of the stored form of a text of this length, without a terminator. */
constexpr std::size_t stored_text_size(std::size_t length) {
  return stored_text_detail::head + ((stored_text_detail::hash_bytes + length) * 8 + 5) / 6;
}

/* The room that the plain text of a stored form of this size needs, without a terminator. */
constexpr std::size_t stored_text_plain_size(std::size_t size) {
  constexpr std::size_t least = stored_text_size(0);
  return size < least ? 0
                      : (size - stored_text_detail::head) * 6 / 8 - stored_text_detail::hash_bytes;
}

/* Writes stored_text_size(plain.size()) characters. */
constexpr void stored_text_encode(std::string_view plain, char* stored) {
  namespace detail = stored_text_detail;
  for (const char c : detail::magic) *stored++ = c;
  *stored++ = detail::version;
  const std::uint64_t hash = detail::hash_of(plain);
  detail::writer out(stored);
  for (std::size_t i = 0; i < detail::hash_bytes; ++i)
    out.put(static_cast<std::uint8_t>(hash >> 8 * i));
  detail::key_stream key(hash);
  for (const char c : plain) out.put(static_cast<std::uint8_t>(c) ^ key.next());
  out.finish();
}

/* Writes stored_text_plain_size(stored.size()) bytes, which mean something only when it is whole.
 */
constexpr stored_text_state stored_text_decode(std::string_view stored, char* plain) {
  namespace detail = stored_text_detail;
  if (stored.substr(0, detail::magic.size()) != detail::magic ||
      stored.size() < stored_text_size(0))
    return stored_text_state::damaged;
  if (stored[detail::magic.size()] != detail::version) return stored_text_state::of_another_version;
  detail::reader in(stored.substr(detail::head));
  std::uint64_t hash = 0;
  for (std::size_t i = 0; i < detail::hash_bytes; ++i) hash |= std::uint64_t{in.get()} << 8 * i;
  detail::key_stream key(hash);
  const std::size_t length = stored_text_plain_size(stored.size());
  for (std::size_t i = 0; i < length; ++i) plain[i] = static_cast<char>(in.get() ^ key.next());
  const bool whole = in.finished() && detail::hash_of({plain, length}) == hash;
  return whole ? stored_text_state::whole : stored_text_state::damaged;
}

/* The stored form of a literal, with a terminator. */
template <std::size_t N>
consteval std::array<char, stored_text_size(N - 1) + 1> stored_text(const char (&plain)[N]) {
  std::array<char, stored_text_size(N - 1) + 1> stored = {};
  stored_text_encode({plain, N - 1}, stored.data());
  return stored;
}

}  // namespace zvsdk

#endif

#endif
