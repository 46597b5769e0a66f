// Memory and error record: what works without a running host.

#include <cstdlib>
#include <thread>

#include "tests/common/failing_memory.h"
#include "tests/manager/host_fixture.h"

namespace {

TEST(memory, functions_are_exchanged_only_while_no_block_lives) {
  EXPECT_EQ(nullptr, zcsl_memory_calloc(SIZE_MAX / 2, 4));
  void* block = zcsl_memory_alloc(0);
  EXPECT_EQ(6u, low_word(zvsdk_manager_memory_functions_set(nullptr)));
  std::thread([&] { zcsl_memory_free(block); }).join();
  failing_memory other;
  block = zcsl_memory_realloc(zcsl_memory_alloc(8), 64);
  EXPECT_EQ(6u, low_word(zvsdk_manager_memory_functions_set(nullptr)));
  zcsl_memory_free(block);
  EXPECT_EQ(2u, other.requests());
}

constexpr zvsdk_status s_fault = 0x90890601;

TEST(error_record, joins_a_message_and_its_function_until_the_next_fault_or_success) {
  manager_errorinfo_set(s_fault, s_fault, nullptr, "no such attribute");
  manager_errorinfo_set(s_fault, s_fault, "zvsdk_playlist_generate_playlist", nullptr);
  EXPECT_STREQ("zvsdk_playlist_generate_playlist", last_error().function);
  EXPECT_STREQ("no such attribute", last_error().message);
  manager_errorinfo_set(s_fault, s_fault, "another_function", nullptr);
  EXPECT_STREQ("", last_error().message) << "the message belongs to that call alone";
  manager_errorinfo_set(s_fault, 0x900D0001, "f", "bad");
  manager_errorinfo_set(0, 0, "g", "ignored");
  EXPECT_EQ(0u, last_error().mapped);
  EXPECT_STREQ("", last_error().function);
  EXPECT_STREQ("bad", output_of(zvsdk_manager_errorinfo_get_message).message);
}

TEST_F(host_test, each_thread_has_an_error_record_of_its_own) {
  manager_errorinfo_set(s_fault, s_fault, "here", "mine");
  std::thread([&] {
    EXPECT_EQ(0u, last_error().mapped);
    host.errors->errorinfo_set_format(0x90890002, 0x90890002, "there", "%d of %s", 3, "four");
    EXPECT_STREQ("3 of four", last_error().message);
  }).join();
  EXPECT_STREQ("mine", last_error().message);
}

/* Exit handlers run when the thread's own objects are destroyed already. */
TEST(error_record, outlives_the_objects_of_its_thread) {
  static const std::string text(200, 'x');
  const auto late_call = [] {
    manager_errorinfo_set(1, 2, "late", (text + "y").c_str());
    if (last_error().message != text + "y" || zvsdk_manager_errorinfo_clear() != 0) std::_Exit(3);
  };
  const auto end_with_record = [&] {
    manager_errorinfo_set(1, 1, "early", text.c_str());
    std::atexit(late_call);
    std::exit(0);
  };
  EXPECT_EXIT(end_with_record(), testing::ExitedWithCode(0), "");
}

}  // namespace
