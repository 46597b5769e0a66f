// Stored texts: what is encoded decodes to itself, and any damage is noticed.
#include "tests/manager/host_fixture.h"
#include "zvsdk_stored_text.h"

namespace {

class serialization : public host_test {
 protected:
  static std::string encode(const std::string& plain) {
    char* stored = nullptr;
    EXPECT_EQ(0u, zvsdk_manager_serialization_encode(plain.c_str(), &stored));
    const std::string text = stored;
    zcsl_memory_free(stored);
    return text;
  }
  // The plain text, or the low word of the refusal.
  std::string decode(const std::string& stored) {
    char* buffer = nullptr;
    uint32_t length = 0;
    const zvsdk_status status =
        host.serialization->serialization_decode(stored.c_str(), &buffer, &length);
    if (status != 0) return "#" + std::to_string(low_word(status));
    const std::string plain = buffer;
    EXPECT_EQ(length, plain.size());
    EXPECT_EQ(0u, host.serialization->serialization_free(buffer));
    return plain;
  }
};

TEST_F(serialization, gives_texts_back) {
  const std::string plain = "GENPL LIMIT %s \xC3\xA9\x01\xFF";
  for (size_t i = 0; i <= plain.size(); ++i)
    EXPECT_EQ(plain.substr(0, i), decode(encode(plain.substr(0, i))));
  EXPECT_EQ("ZVT1C72qgEbYMKRogCqHqg", encode("hello"));
  EXPECT_EQ(encode("hello"), zvsdk::stored_text("hello").data());
}

TEST_F(serialization, refuses_damaged_texts) {
  for (const char* plain : {"GENPL", "GENPL ", "GENPL;;"}) {
    const std::string whole = encode(plain);
    for (size_t at = 0; at < whole.size(); ++at) {
      EXPECT_EQ(at == 0 ? "#1" : "#12", decode(whole.substr(0, at))) << "cut at " << at;
      for (int flip = 1; flip < 256; ++flip) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ flip);
        if (damaged[at] == 0) continue;
        EXPECT_EQ(at == 3 ? "#11" : "#12", decode(damaged)) << at << " " << flip;
      }
    }
    for (const char* more : {"A", "AAAA", "="}) EXPECT_EQ("#12", decode(whole + more));
  }
}

}  // namespace
