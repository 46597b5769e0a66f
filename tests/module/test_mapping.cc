// Which code an application sees for a status of any package, and how an outcome is reported.
#include "module/playlist_frame.h"
#include "tests/common/playlist_fixture.h"

namespace {

TEST(mapping, presents_codes_of_this_package) {
  const std::pair<zvsdk_status, zvsdk_status> table[] = {
      {0, 0},
      {0x108901A0, 0x108901A0},  // our own stay as they are, warnings too
      {0x90890361, 0x90890361},
      {0x900D0003, 0x10890003},  // by low word, whatever the package and the class
      {0x90140002, 0x90890002},
      {0x90020084, 0x90890084},
      {0x100D0361, 0x10890361},
      {0x90040042, 0x90890400},  // by package
      {0x90140001, 0x90890400},
      {0x90070009, 0x90890404},
      {0x900E0001, 0x90890405},
      {0x90100001, 0x90890403},
      {0x90AB0042, 0x90890042},  // anything else keeps its low word
      {0x100D01A0, 0x908901A0},
      {7, 0x90890007},
  };
  for (const auto& [raised, presented] : table)
    EXPECT_EQ(presented, _playlist_map_error(raised)) << std::hex << raised;
}

TEST_F(module_test, records_every_outcome_and_logs_errors_alone) {
  log_capture log(zcsl_log_error);
  playlist_call call("an_exported_call", "an_exported_call( %u )", 1u);
  for (const auto& [raised, presented] : {std::pair{0x900D0003u, playlist_warn_not_found},
                                          {0x90AB003Cu, playlist_error_internal},
                                          {0u, 0u}}) {
    EXPECT_EQ(presented, call.finish(raised));
    EXPECT_EQ(presented, last_error().mapped);
    EXPECT_EQ(raised, last_error().source);
  }
  EXPECT_EQ(texts{"1 9089003C an_exported_call: "}, log.take());
}

}  // namespace
