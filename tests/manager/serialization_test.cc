// Stored texts: what is encoded decodes to itself, and any damage is noticed.
#include "tests/manager/host_fixture.h"
#include "zvsdk_stored_text.h"

namespace {

class serialization : public host_test {
 protected:
  std::string encode(const std::string& plain) {
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
    EXPECT_EQ(length, std::string(buffer).size());
    const std::string plain = buffer;
    EXPECT_EQ(0u, host.serialization->serialization_free(buffer));
    return plain;
  }
};

TEST_F(serialization, gives_texts_back) {
  std::string plain;
  for (const char* piece : {"", "G", "E", "N", "PL LIMIT %s", "\xC3\xA9\x01\xFF", " and so on"}) {
    plain += piece;
    EXPECT_EQ(plain, decode(encode(plain)));
  }
  static constexpr auto compiled = zvsdk::stored_text("GENPL LIMIT %s RESULTS");
  EXPECT_EQ(compiled.data(), encode("GENPL LIMIT %s RESULTS"));
  EXPECT_STREQ("ZVT1C72qgEbYMKRogCqHqg", zvsdk::stored_text("hello").data()) << "stays readable";
}

TEST_F(serialization, refuses_damaged_texts) {
  for (const char* plain : {"GENPL", "GENPL ", "GENPL;;"}) {
    const std::string whole = encode(plain);
    for (size_t at = 0; at < whole.size(); ++at) {
      EXPECT_EQ(at == 0 ? "#1" : "#12", decode(whole.substr(0, at))) << "cut at " << at;
      for (int c = 1; c < 256; ++c) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(c);
        if (damaged == whole) continue;
        EXPECT_EQ(at == 3 ? "#11" : "#12", decode(damaged)) << at << " " << c;
      }
    }
    for (const char* more : {"A", "AA", "AAAA", "="}) EXPECT_EQ("#12", decode(whole + more));
  }
}

}  // namespace
