// The engine against the plain model: random libraries, random statements and seeds, each round
// with its own random numbers.
#include <algorithm>

#include "tests/attributes/attribute_fixture.h"
#include "tests/common/results_text.h"
#include "tests/reference/reference.h"

namespace {

using reference::facts;
using reference::texts;

// As a playlist object: each attribute's values under its own key.
zdo_ptr as_object(const facts& of) {
  const std::string item = std::to_string(of.item);
  zdo_ptr made = make_object("zvsdk_ctx_pldata", {{"ident_ref", item.c_str()}});
  for (int kind = 0; kind < reference::attribute_count; ++kind) {
    const auto& rule = reference::rules[kind];
    for (const std::string& value : of.held[kind]) {
      const bool number = value[0] == '#';
      const std::string key =
          std::string("_sdkmgr_val_list_") + (number ? rule.value : "mood_data");
      zvsdk_manager_zdo_value_add(made.get(), reference::is_text(kind) ? rule.name : key.c_str(),
                                  value.c_str() + number);
    }
  }
  return made;
}

// Collections and what the model makes of them; the first has the others joined.
struct world {
  std::vector<reference::library> libraries;
  std::vector<collection_ptr> collections;

  explicit world(std::mt19937& random) : libraries(1 + random() % 3) {
    for (reference::library& each : libraries) {
      const std::string name = std::to_string(collections.size());
      collections.emplace_back(output_of(zvsdk_playlist_collection_create, name.c_str()));
      for (uint32_t i = random() % 40; i > 0; --i)
        each.push_back(make_media(random, name + "-" + std::to_string(i)));
      if (collections.size() == 1) continue;
      playlist_collection_addref(collections.back().get());
      zcsl_vector_add(collections[0]->joined, collections.back().get());
    }
  }

  // Up to three objects add their values to the same media.
  facts make_media(std::mt19937& random, const std::string& ident) {
    facts made = {ident, {}, 0};
    for (uint32_t i = random() % 3 + 1; i > 0; --i) {
      const facts said = reference::make_facts(random);
      zvsdk_playlist_collection_add_zdo(collections.back().get(), ident.c_str(),
                                        as_object(said).get());
      for (int of = 0; of < reference::attribute_count; ++of)
        for (const std::string& value : said.held[of])
          if (texts& all = made.held[of]; std::ranges::count(all, value) == 0) all.push_back(value);
    }
    for (int of = 0; of < reference::attribute_count; ++of)
      EXPECT_EQ(made.held[of],
                values_of(collections.back().get(), reference::rules[of].name, ident.c_str()));
    return made;
  }

  std::string engine(const std::string& statement, zvsdk_zdo* seed) {
    playlist_results* handle = nullptr;
    const zvsdk_status status = zvsdk_playlist_generate_playlist(
        nullptr, statement.c_str(), collections[0].get(), seed, &handle);
    const results_ptr results(handle);
    return status == 0 ? results_text(handle) : "status " + std::to_string(status);
  }

  // Whether an analysis for a media shows a root that reaches its threshold: the line of WHERE says
  // so, or for a LIKE, which holds from less than 1000 on, the score behind it. Or "status ...".
  std::string analyze(const std::string& statement, const reference::expression& root,
                      const std::string& ident) {
    const char* text = nullptr;
    const zvsdk_status status = zvsdk_playlist_statement_analyze_ident(
        statement.c_str(), collections[0].get(), ident.c_str(), &text);
    if (status != 0) return "status " + std::to_string(status);
    const std::string tree = text;
    EXPECT_EQ(0u, zvsdk_manager_handle_release(text));
    bool reached = tree.starts_with("WHERE [TRUE]\n");
    if (root.op == "LIKE") {
      const size_t line = tree.find('\n') + 1;
      const int score = std::atoi(&tree[tree.rfind('[', tree.find('\n', line)) + 1]);
      const uint32_t level = reference::make_criterion(root, nullptr).level;
      const int32_t threshold = reference::rules[root.of].thresholds[level < 4 ? level : 0];
      reached = tree.find("[IGNORED]", line) > tree.find('\n', line) && score >= threshold;
    }
    return reached ? "in" : "out";
  }
};

using against_reference = small_lists_test;

TEST_F(against_reference, agrees_on_random_statements) {
  constexpr uint32_t rounds = 150, statements = 120;
  for (uint32_t round = 1; round <= rounds && !HasFailure(); ++round) {
    std::mt19937 random(round);
    world here(random);
    zvsdk_playlist_morelikethis_option_set(here.collections[0].get(), ZVSDK_PLAYLIST_OPTION_RANDOM,
                                           std::to_string(round).c_str());
    for (uint32_t i = 0; i < statements && !HasFailure(); ++i) {
      reference::statement statement = reference::make_statement(random);
      facts seed = reference::make_facts(random);
      seed.item = static_cast<uint32_t>(random() % 9);
      const zdo_ptr object = as_object(seed);
      const bool seeded = random() % 30 != 0;
      const std::string found = here.engine(statement.text, seeded ? object.get() : nullptr);
      EXPECT_EQ(reference::run(statement, here.libraries, seeded ? &seed : nullptr, round), found)
          << statement.text << "\nround " << round << " statement " << i;
    }
  }
}

// A media that cannot be evaluated is not in; the last one's failure is the generation's as well.
TEST_F(against_reference, analyses_agree_with_generations) {
  uint32_t compared[2] = {};
  for (uint32_t i = 0; i < 2400 && !HasFailure(); ++i) {
    std::mt19937 random(i);
    const reference::expression_ptr where = reference::make_statement(random).where;
    if (!where || where->shown.find("SEED") != std::string::npos) continue;
    world here(random);
    const std::string statement = "GENPL WHERE " + where->shown;
    const std::string chosen = " " + here.engine(statement, nullptr);
    const bool failed = chosen.starts_with(" status ");
    std::string said;
    for (const reference::library& each : here.libraries) {
      for (const facts& media : each) {
        said = here.analyze(statement, *where, media.ident);
        const bool is_in = chosen.find(" " + media.ident + ":") != std::string::npos;
        EXPECT_TRUE(failed || is_in == (said == "in")) << statement << " " << media.ident << said;
        ++compared[is_in];
      }
    }
    EXPECT_TRUE(!failed || said.empty() || chosen == " " + said) << statement << chosen << said;
  }
  EXPECT_LT(5000u, std::min(compared[0], compared[1]));
}

}  // namespace
