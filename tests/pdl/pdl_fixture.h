/*
 * pdl_fixture.h: what tests of the statement language start from: a collection of tracks, and one
 * call that runs a statement and tells the outcome as text:
 *
 *     EXPECT_EQ("b:1000 a:1000", run("GENPL WHERE T_Value > 3"));
 *
 * T_Value is an attribute of the tests' own that a media may have any number of integers and texts
 * of. It supports every operator; LIKE scores the distance from the criterion. The value 8888 has
 * no opinion, 9999 fails with the bare status 62.
 */
#ifndef PDL_FIXTURE_H
#define PDL_FIXTURE_H

#include "pdl/playlist_pdl_parser.h"
#include "tests/common/results_text.h"
#include "tests/common/test_attribute.h"

struct test_criterion {
  uint32_t op;
  uint32_t value;
};

inline test_criterion& test_criterion_of(playlist_attribute_instance* instance) {
  return *reinterpret_cast<test_criterion*>(instance);
}

/* For each operator from 10 up: bits for a value below, at and above the criterion. */
inline bool test_value_satisfies(const test_criterion& criterion, uint32_t value) {
  static constexpr uint8_t holds[] = {0b010, 0b101, 0b100, 0b110, 0b001, 0b011};
  const int side = 1 + (value > criterion.value) - (value < criterion.value);
  return (holds[criterion.op - playlist_op_equal] >> side & 1) != 0;
}

inline int32_t test_value_score(const test_criterion& criterion, uint32_t value) {
  if (value == 8888) return playlist_score_ignored;
  if (criterion.op == playlist_op_like)
    return 1000 - 10 * std::abs(static_cast<int32_t>(value - criterion.value));
  return test_value_satisfies(criterion, value) ? 1000 : -1000;
}

/* The criteria "absent", "locale" and "broken" fail. */
inline playlist_attribute test_value_attribute() {
  playlist_attribute attribute = test_attribute();
  attribute.attribute_name = [](const char** name) -> zvsdk_status { return *name = "T_Value", 0; };
  attribute.supported_operators = [](uint32_t index, uint32_t* op) {
    static constexpr uint32_t all[] = {10, 11, 12, 13, 14, 15, 20};
    return index < std::size(all) ? (*op = all[index], 0) : playlist_warn_not_found;
  };
  attribute.create_instance = [](playlist_attribute_instance** instance) -> zvsdk_status {
    return *instance = reinterpret_cast<playlist_attribute_instance*>(new test_criterion()), 0;
  };
  attribute.set_string_criteria = [](playlist_attribute_instance* instance, uint32_t op,
                                     const char* text, int32_t* threshold) -> zvsdk_status {
    if (op == playlist_op_like) *threshold = 700;
    test_criterion_of(instance) = {op, static_cast<uint32_t>(std::atoi(text))};
    if (std::string(text) == "absent") return 0x900D0003u;
    if (std::string(text) == "locale") return playlist_error_no_locale;
    return std::string(text) == "broken" ? playlist_error_bad_state : 0;
  };
  attribute.set_seed_criteria = [](playlist_attribute_instance* instance, uint32_t op,
                                   zvsdk_zdo* seed, int32_t* threshold) -> zvsdk_status {
    const char* text = nullptr;
    if (g_playlist_zdo_interface->zdo_value_get(seed, "T_Value", 1, &text) != 0)
      return playlist_error_no_seed_data;
    if (op == playlist_op_like) *threshold = 900;
    test_criterion_of(instance) = {op, static_cast<uint32_t>(std::atoi(text))};
    return 0;
  };
  attribute.compare_integer_data = [](playlist_attribute_instance* instance, uint32_t value,
                                      int32_t* score) -> zvsdk_status {
    *score = test_value_score(test_criterion_of(instance), value);
    return value == 9999 ? 62 : 0;
  };
  attribute.release_instance = [](playlist_attribute_instance* instance) -> zvsdk_status {
    return delete &test_criterion_of(instance), 0;
  };
  return attribute;
}

class pdl_test : public playlist_test {
 protected:
  void SetUp() override {
    playlist_test::SetUp();
    playlist_attribute attribute = test_value_attribute();
    ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&attribute));
    collection = create("main");
  }
  void TearDown() override {
    collection.reset();
    playlist_test::TearDown();
  }

  static collection_ptr create(const char* name) {
    return collection_ptr(output_of(zvsdk_playlist_collection_create, name));
  }

  static void add(const collection_ptr& to, const char* ident,
                  std::initializer_list<const char*> values) {
    const zdo_ptr object = make_object("test");
    for (const std::string value : values)
      zvsdk_manager_zdo_value_add(object.get(), "test_values",
                                  (std::isdigit(value[0]) ? "#" + value : value).c_str());
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(to.get(), ident, object.get()));
  }
  void add(const char* ident, std::initializer_list<const char*> values) {
    add(collection, ident, values);
  }

  /* Makes another collection take part in the generation. */
  void join(const collection_ptr& other) {
    EXPECT_EQ(0u, zcsl_vector_add(collection->joined, other.get()));
    EXPECT_EQ(0u, playlist_collection_addref(other.get()));
  }

  results_ptr generate(const std::string& statement, zvsdk_zdo* seed = nullptr) {
    playlist_results* results = nullptr;
    status = zvsdk_playlist_generate_playlist(nullptr, statement.c_str(), collection.get(), seed,
                                              &results);
    return results_ptr(results);
  }

  /* "ident:score ident:score", or the status in hexadecimal with the message of the fault. */
  std::string run(const std::string& statement, zvsdk_zdo* seed = nullptr) {
    zvsdk_manager_errorinfo_clear();
    const results_ptr results = generate(statement, seed);
    const char* message = output_of(zvsdk_manager_errorinfo_get_message).message;
    return status == 0 ? results_text(results.get()) : fault(status, message);
  }

  /* The evaluated tree, or the outcome as run tells it. */
  std::string analyze(const std::string& statement, const char* ident) {
    const char* text = nullptr;
    status =
        zvsdk_playlist_statement_analyze_ident(statement.c_str(), collection.get(), ident, &text);
    EXPECT_EQ(status == 0, text != nullptr);
    if (status != 0) return fault(status, last_error().message);
    const std::string tree = text;
    EXPECT_EQ(0u, zvsdk_manager_handle_release(text));
    return tree;
  }

  static std::string fault(zvsdk_status status, const char* message) {
    char code[16];
    std::snprintf(code, sizeof code, "%08x", status);
    return message && *message ? code + std::string(": ") + message : code;
  }

  collection_ptr collection;
  zvsdk_status status = 0;
};

#endif
