// The exported calls: checks in their order, licence, error record, references, options, reading.
#include "tests/pdl/pdl_fixture.h"

namespace {

class pdl_generate : public pdl_test {
 protected:
  // What the record tells of a call that was refused: the message of this module about a wrong
  // argument, or that the host knows no such handle.
  static std::string told(zvsdk_status status) {
    const zvsdk_error_info info = last_error();
    EXPECT_TRUE(zvsdk_is_error(status));
    if (info.source != playlist_error_invalid_arg) return "no such handle";
    EXPECT_EQ(playlist_error_invalid_arg, status);
    EXPECT_EQ(playlist_error_invalid_arg, info.mapped);
    return info.message;
  }
  static void check(std::initializer_list<std::pair<std::string, const char*>> rows) {
    for (const auto& [outcome, expected] : rows) EXPECT_EQ(expected, outcome);
  }
};

// Each call is wrong in one place and in all that are looked at later.
TEST_F(pdl_generate, checks_its_arguments_in_order) {
  const auto list = zvsdk_playlist_generate_playlist;
  const auto like = zvsdk_playlist_generate_morelikethis;
  uint32_t stranger = playlist_collection_magic;
  auto* foreign = reinterpret_cast<playlist_collection*>(&stranger);
  auto* nothing = reinterpret_cast<zvsdk_zdo*>(&stranger);
  auto* nobody = reinterpret_cast<zvsdk_user*>(&stranger);
  playlist_collection* main = collection.get();
  playlist_results* made = nullptr;
  check({{told(list(nullptr, "", nullptr, nothing, nullptr)), "No PDL statement provided."},
         {told(list(nullptr, "GENPL", nullptr, nothing, nullptr)),
          "Parameter ph_results cannot be null."},
         {told(list(nullptr, "GENPL", nullptr, nothing, &made)), ""},
         {told(list(nullptr, "GENPL", foreign, nullptr, &made)), "no such handle"},
         {told(list(nullptr, "GENPL", main, nothing, &made)), "no such handle"},
         {told(like(nobody, foreign, nothing, nullptr)), "Parameter ph_results cannot be null."},
         {told(like(nullptr, foreign, nothing, &made)), ""},
         {told(like(nobody, nullptr, nullptr, &made)), "no such handle"},
         {told(like(user.get(), nullptr, nothing, &made)), ""},
         {told(like(user.get(), foreign, nullptr, &made)), "no such handle"},
         {told(like(user.get(), main, nullptr, &made)), ""},
         {told(like(user.get(), main, nothing, &made)), "no such handle"}});
  EXPECT_STREQ("zvsdk_playlist_generate_morelikethis", last_error().function);
  EXPECT_EQ(nullptr, made);
}

TEST_F(pdl_generate, asks_for_the_licence_before_it_works) {
  struct asked {
    zvsdk_user* user;
    std::string feature;
  } last = {};
  zvsdk_manager_license_policy_set(
      [](void* context, zvsdk_user* who, const char* feature) -> zvsdk_status {
        *static_cast<asked*>(context) = {who, feature};
        return 0x90AB0042u;
      },
      &last);
  playlist_results* results = nullptr;
  EXPECT_EQ(0x90890042u,
            zvsdk_playlist_generate_playlist(user.get(), "~", collection.get(), nullptr, &results));
  EXPECT_EQ(user.get(), last.user);
  EXPECT_EQ("playlist", last.feature);
  const zdo_ptr seed = make_object("seed");
  EXPECT_EQ(0x90890042u, zvsdk_playlist_generate_morelikethis(user.get(), collection.get(),
                                                              seed.get(), &results));
  zvsdk_manager_license_policy_set(nullptr, nullptr);
}

TEST_F(pdl_generate, sets_known_options_to_numbers) {
  const auto set = [&](const char* key, const char* value) {
    return zvsdk_playlist_morelikethis_option_set(collection.get(), key, value);
  };
  constexpr const char *key = ZVSDK_PLAYLIST_OPTION_MAX_TRACKS,
                       *invalid = "Parameter option_key contains an invalid option.";
  const auto get_into = [&](const char* option, const char** text) {
    return zvsdk_playlist_morelikethis_option_get(collection.get(), option, text);
  };
  const char* text = nullptr;
  check({{told(set("", "")), "Parameter option_key is empty or null."},
         {told(set("nothing", "")), "Parameter option_value is empty or null."},
         {told(set("nothing", "5\xFF")), "Parameter option_value contains an invalid UTF8 string."},
         {told(set("nothing", "abc")),
          "Parameter option_value must be numeric and not evaluate to zero."},
         {told(set("nothing", "5")), invalid},
         {told(get_into("", nullptr)), "Parameter option_key is empty or null."},
         {told(get_into("nothing", nullptr)), "Parameter p_option_value is null."},
         {told(get_into("nothing", &text)), invalid}});
  for (const auto& [value, kept] : {std::pair{"025", "25"}, {"30 tracks", "30 tracks"}}) {
    EXPECT_EQ(0u, set(key, value));
    EXPECT_STREQ(kept, output_of(zvsdk_playlist_morelikethis_option_get, collection.get(), key));
  }
}

TEST_F(pdl_generate, reads_results_by_index) {
  add("a", {"1"});
  const results_ptr results = generate("GENPL");
  const char *ident = nullptr, *name = nullptr;
  uint32_t count = 0;
  int32_t score = 0;
  EXPECT_EQ(1u, output_of(zvsdk_playlist_results_count, results.get()));
  EXPECT_EQ(0u, zvsdk_playlist_results_enum(results.get(), 0, &ident, &name));
  EXPECT_STREQ("a", ident);
  EXPECT_STREQ("main", name);
  EXPECT_EQ(playlist_warn_not_found, zvsdk_playlist_results_enum(results.get(), 1, &ident, &name));
  EXPECT_EQ(playlist_warn_not_found, zvsdk_playlist_results_get_score(results.get(), 1, &score));
  EXPECT_EQ(playlist_error_invalid_arg, zvsdk_playlist_results_count(nullptr, &count));
  EXPECT_TRUE(zvsdk_is_error(
      zvsdk_playlist_results_release(reinterpret_cast<playlist_results*>(collection.get()))));
  EXPECT_EQ(0u, zvsdk_playlist_results_release(nullptr));
  // A missing output is logged and not reported.
  zvsdk_manager_errorinfo_clear();
  EXPECT_EQ(playlist_error_invalid_arg, zvsdk_playlist_results_count(results.get(), nullptr));
  EXPECT_EQ(playlist_error_invalid_arg,
            zvsdk_playlist_results_enum(results.get(), 0, nullptr, nullptr));
  EXPECT_EQ(0u, last_error().mapped);
}

TEST_F(pdl_generate, leaves_where_it_looked_as_the_hint) {
  for (const char* ident : {"a", "b", "c"}) add(ident, {"1"});
  EXPECT_EQ("b:1000 c:1000 a:1000", run("GENPL WHERE T_Value = 1"));
  EXPECT_EQ(2u,
            output_of(playlist_collection_get_attrinfo, collection.get(), "T_Value")->find_hint);
}

}  // namespace
