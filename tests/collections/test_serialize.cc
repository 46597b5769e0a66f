// Collections as bytes: the form itself, what else is read, what is refused, and that nothing is
// lost on the way.
#include "tests/collections/collection_fixture.h"
#include "tests/common/failing_memory.h"
#include "tests/common/use_collection.h"

namespace {

std::string bytes(const std::string& hex) {
  std::string out;
  for (size_t i = 0; i + 1 < hex.size(); i += hex[i] == ' ' ? 1 : 2)
    if (hex[i] != ' ') out += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  return out;
}

const std::string s_header = "ce11111111 02 00 05 08 a5526f636b00 ";
const std::string s_idents = "ce33333333 02 00 05 a50069643100 ";
const std::string s_no_strings = "ce44444444 02 00 00 ";
const std::string s_tempo_name = "a95a565f54656d706f00 ";
// The tempo's block up to its name, with so many records.
const std::string s_tempo_of_0 = "ce22222222 02 01 09 00 " + s_tempo_name;
const std::string s_tempo_of_1 = "ce22222222 02 01 09 01 " + s_tempo_name;
const std::string s_tempo_of_3 = "ce22222222 02 01 09 03 " + s_tempo_name;
const std::string s_tempo = s_tempo_of_1 + "a8 78000000 01000000 ";
const std::string s_rock = s_header + s_idents + s_no_strings + s_tempo;

// Two idents, one text, and three values, the text for the first ident: "id1" has "a" and 120.
const std::string s_two = s_header + "ce33333333 02 00 09 a9006964310069643200 " +
                          "ce44444444 02 00 03 a3006100 " + s_tempo_of_3 +
                          "b8 01000080 01000000 78000000 01000000 07000000 02000000 ";

// The same in the first version, but for the values.
const std::string s_one =
    "ce11111111 01 05 08 a5526f636b00 ce33333333 01 09 a9006964310069643200 "
    "ce44444444 01 03 a3006100 ce22222222 01 09 03 " +
    s_tempo_name;

collection_ptr read(const std::string& data) {
  collection_ptr made(deserialized(data));
  EXPECT_NE(nullptr, made);
  return made;
}

using serialized_form = collection_test;

TEST_F(serialized_form, is_the_worked_example_byte_for_byte) {
  const std::string rock = bytes(s_rock);
  const collection_ptr made = read(rock);
  EXPECT_EQ(116u, output_of(zvsdk_playlist_collection_serialize_size, made.get()));
  EXPECT_EQ(rock, serialized(made.get()));
  EXPECT_EQ(texts{"#120"}, values_of(made.get(), "zv_tempo", "id1"));

  std::string buffer(116, 'x');
  uint32_t size = 115;  // enough, but less than the bound
  EXPECT_EQ(playlist_error_buffer_too_small,
            zvsdk_playlist_collection_serialize(made.get(), buffer.data(), &size));
  EXPECT_EQ(std::string(116, 'x'), buffer);
  EXPECT_EQ(115u, size);
  EXPECT_EQ(0u, zvsdk_playlist_collection_serialize(made.get(), nullptr, &size));
  EXPECT_EQ(116u, size);
  EXPECT_EQ(0u, zvsdk_playlist_collection_serialize(made.get(), buffer.data(), &size));
  EXPECT_EQ(rock.size(), size);
  EXPECT_EQ(std::string(116, 'x').substr(size), buffer.substr(size));
}

// A name of 31 bytes with all attributes, none of which has a value, and no ident.
TEST_F(serialized_form, has_every_block_of_a_new_collection) {
  const std::string name(31, 'n');
  std::string expected = bytes("ce11111111 02 00 20 08 da0020") + name + '\0' +
                         bytes("ce33333333 02 00 00 ce44444444 02 00 00");
  for (const std::string& attribute : listed(zvsdk_playlist_attributes_enum)) {
    const char size = static_cast<char>(attribute.size() + 1);
    expected += bytes("ce22222222 02 01") + size + '\0' + static_cast<char>(0xa0 | size) +
                attribute + '\0' + '\xa0';
  }
  ASSERT_EQ(0u, zvsdk_playlist_collection_update_name(collection, name.c_str()));
  EXPECT_EQ(expected, serialized(collection));
  EXPECT_EQ(expected, serialized(read(expected).get()));
}

TEST_F(serialized_form, is_read_from_older_and_other_forms) {
  const std::string head = s_two.substr(0, s_two.find("ce22222222"));
  const std::string raw = "01000080 01000000 78000000 01000000 07000000 02000000 ";
  const struct {
    const char* what;
    std::string data;
  } rows[] = {
      {"version 1, out of order", s_one + "c20207 c30101 c20178"},
      {"version 1, in order, bit 31 set already", s_one + "c301ce80000001 c20178 c2cc0207"},
      {"version 2 with single records",
       head + "ce22222222 02 00 09 03 " + s_tempo_name + "c30101 c20178 c20207"},
      {"str and bin", head + "ce22222222 02 01 09 03 d9095a565f54656d706f00 c418 " + raw},
      {"longer forms", head + "cf0000000022222222 d002 cd0001 ce00000009 d3" +
                           "0000000000000003 db000000095a565f54656d706f00 c600000018 " + raw},
      {"an unknown tag behind", s_two + "2a 00 00"},
      {"an unknown block behind", s_two + "ce55555555 02 00 07 c1"},
      {"a name without its end",
       "ce11111111 02 00 00 ce00010000 a4526f636b " + s_two.substr(s_header.size())},
  };
  for (const auto& row : rows)
    EXPECT_EQ(bytes(s_two), serialized(read(bytes(row.data)).get())) << row.what;
}

// Its records are out of order, and stay so.
TEST_F(serialized_form, keeps_an_attribute_that_the_module_lacks) {
  const std::string odd = "ce22222222 02 01 04 02 a46f646400 b0 0600008009000000 0500000001000000 ";
  std::string data = bytes(s_rock + odd);
  data.replace(data.find("ZV_T"), 4, "zv_t");  // known all the same
  log_capture log(zcsl_log_warning);
  const collection_ptr made = read(data);
  EXPECT_EQ(
      texts{"2 00890000 playlist_coll_deserialize: Collection 'Rock' has Attribute 'odd' which "
            "is not supported by this Zorvex Playlist module."},
      log.take());
  EXPECT_EQ(data, serialized(made.get()));
  EXPECT_EQ(texts{"#5"}, values_of(made.get(), "odd", "id1"));
  use_collection(made.get(), user.get());
}

TEST_F(serialized_form, is_refused_when_it_is_none) {
  const std::string far = "000000000000";  // what keeps a failure away from the end
  const zvsdk_status bad = playlist_error_bad_data, corrupt = playlist_error_corrupt_data,
                     unknown = playlist_error_unsupported;
  const struct {
    const char* what;
    std::string data;
    zvsdk_status status;
  } rows[] = {
      {"no header", s_idents + far, bad},
      {"no header in few bytes", "ce33333333", corrupt},
      {"nil for a tag", "c0" + far, bad},
      {"nil for a tag behind", s_rock + "c0" + far, bad},
      {"an array for a tag", "ddffffffff" + far, bad},
      {"a later version", "ce11111111 03 00 05 08 a5526f636b00", unknown},
      {"version 0", "ce11111111 00 05 08 a5526f636b00" + far, unknown},
      {"a later attribute", s_header + "ce22222222 09 01 09 01 " + s_tempo_name, unknown},
      {"a version at the end", s_header + "ce33333333 03 00 00", corrupt},
      {"a second header", s_header + s_header + far, bad},
      {"no attribute", s_header + s_idents + s_no_strings, corrupt},
      {"no attribute ahead of an unknown tag", s_header + "2a0000" + far, bad},
      {"strings longer than said", s_header + "ce33333333 02 00 04 a50069643100" + far, bad},
      {"strings of another type", s_header + "ce33333333 02 00 05 850069643100" + s_tempo, bad},
      {"a negative size", s_header + "ce33333333 02 00 d0ff a50069643100" + s_tempo, bad},
      {"strings that are no block", s_header + "ce33333333 02 00 02 a20061" + far, 0x90890009},
      {"an empty name", s_header + "ce22222222 02 01 09 00 a0 a0" + far, bad},
      {"a name longer than said", s_header + "ce22222222 02 01 08 01 " + s_tempo_name + far, bad},
      {"fewer records than said", s_header + s_tempo_of_3 + "a87800000001000000" + far, bad},
      {"records without a count", s_header + s_tempo_of_0 + "a87800000001000000" + far, bad},
      {"a record in part", s_header + s_tempo_of_1 + "a778000000010000" + far, bad},
      {"records of another type", s_header + s_tempo_of_0 + "00" + far, bad},
      {"no boolean", s_header + "ce22222222 01 09 01 " + s_tempo_name + "010101" + far, bad},
      {"a high count", s_header + "ce22222222 01 09 ceffffffff " + s_tempo_name + "c20101",
       corrupt},
      {"cut within a raw", s_header + "ce22222222 02 01 09 01 a95a565f54656d", bad},
      {"cut early in a raw", s_header + "ce22222222 02 01 09 01 a95a565f54", corrupt},
      {"a block in part behind", s_rock + "2a00", corrupt},
  };
  for (const auto& row : rows) {
    zvsdk_status status = 0;
    EXPECT_EQ(nullptr, deserialized(bytes(row.data), &status)) << row.what;
    EXPECT_EQ(row.status, status) << row.what;
  }
}

// Whatever a cut or a flipped bit makes of it, it is refused, or can be used like any other.
TEST_F(serialized_form, may_be_damaged_anywhere) {
  for (const std::string& whole : {bytes(s_two + s_tempo), bytes(s_one + "c30101 c20178 c20207")}) {
    for (size_t length = 1; length < whole.size(); ++length) {
      zvsdk_status status = 0;
      const collection_ptr made(deserialized(whole.substr(0, length), &status));
      if (length == bytes(s_two).size())
        use_collection(made.get(), user.get());  // cut between blocks
      else
        EXPECT_TRUE(status == playlist_error_bad_data || status == playlist_error_corrupt_data);
    }
    for (size_t bit = 0; bit < whole.size() * 8; ++bit) {
      std::string flipped = whole;
      flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ 1 << bit % 8);
      if (const collection_ptr made{deserialized(flipped)}) use_collection(made.get(), user.get());
    }
  }
}

class serialized_when_short_of_memory : public collection_test {
 protected:
  failing_memory memory;
};

TEST_F(serialized_when_short_of_memory, is_read_whole_or_not_at_all) {
  const std::string out_of_order = bytes(s_one + "c20207 c30101 c20178");
  const uint64_t refusals = memory.for_each_failure([&] {
    zvsdk_status status = 0;
    const collection_ptr made(deserialized(out_of_order, &status));
    const bool is_last = status == playlist_error_corrupt_data;  // the records are the last bytes
    EXPECT_TRUE(made ? status == 0 : is_last || status == playlist_error_no_memory) << status;
    memory.restore();
    if (!made) return;
    EXPECT_EQ(bytes(s_two), serialized(made.get()));
  });
  EXPECT_LT(20u, refusals);
}

}  // namespace
