// Fuzzes serialized collections: any bytes are read, and what they make is joined, generated from,
// viewed, searched, changed and written again. What is written must be readable, and must not
// change any more once it has been read and written; at first a block of strings may lose odd ends.

#include <cstdint>

#include "fuzz/fuzz_library.h"
#include "tests/common/use_collection.h"

namespace {

struct world : started_library {
  playlist_collection* other = nullptr;

  world() {
    require(zvsdk_playlist_collection_create("other", &other) == 0);
    require(zvsdk_playlist_collection_add_ident(other, "a") == 0);
  }
};

// Reads what was written and writes it again; nothing for nothing.
std::string rewritten(const std::string& bytes) {
  if (bytes.empty()) return {};
  playlist_collection* read = deserialized(bytes);
  require(read != nullptr);
  std::string written = serialized(read);
  require(zvsdk_playlist_collection_release(read) == 0);
  return written;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const world s_world;
  if (size == 0) return 0;
  zvsdk_status status = 0;
  playlist_collection* read =
      deserialized(std::string(reinterpret_cast<const char*>(data), size), &status);
  require((status == 0) == (read != nullptr));
  if (read == nullptr) return 0;

  const std::string settled = rewritten(serialized(read));
  require(rewritten(settled) == settled);
  zvsdk_playlist_collection_join(read, s_world.other);
  use_collection(read, s_world.user);
  require(zvsdk_playlist_collection_release(read) == 0);
  return 0;
}
