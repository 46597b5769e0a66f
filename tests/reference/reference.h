/*
 * reference.h: a slow and plain reading of what statements mean, over media in standard containers.
 *
 *   attributes.cc   what media and seeds hold, what a criterion is, and what its comparison with a
 *                   value gives, for all nine attributes; only what lists and correlates say is
 *                   asked of the host
 *   statement.cc    statements as trees, made at random together with their text; there is no
 *                   parser: a tree is what its text must mean
 *   model.cc        scores, and the literal steps of a PER limit with its shuffle
 *
 * What has a plain model of its own elsewhere is called and not written once more: the sort, the
 * random numbers, the similarity of texts and of tempos, the reading of mood profiles.
 *
 * Values are texts; "#7" is the number 7.
 */
#ifndef REFERENCE_H
#define REFERENCE_H

#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "zvsdk_playlist.h"

namespace reference {

using texts = std::vector<std::string>;

enum attribute { title, artist, album, genre, mood, origin, era, arttype, tempo, attribute_count };

/* Thresholds of LIKE: without a level or at a finer one, then at levels 1, 2 and 3. */
inline constexpr struct {
  const char *name, *list, *correlates, *value;
  int32_t thresholds[4];
} rules[] = {{"ZV_TrackName", "", "", "", {600}},
             {"ZV_ArtistName", "", "", "", {600}},
             {"ZV_AlbumName", "", "", "", {600}},
             {"ZV_Genre", "genres", "genre", "genre_id", {750, 500, 600, 700}},
             {"ZV_Mood", "moods", "mood", "mood_id", {700, 500, 600, 700}},
             {"ZV_Origin", "origins", "origin", "origin_id", {700, 500, 600, 700}},
             {"ZV_Era", "eras", "era", "era_id", {850, 700, 750, 800}},
             {"ZV_ArtistType", "artist_types", "arttype", "artist_type_id", {800, 600, 700, 800}},
             {"ZV_Tempo", "tempos", "", "tempo_value", {900, 700, 800, 900}}};
inline bool is_text(int of) {
  return of <= album;
}

/* What a media or a seed holds, with pieces missing. A seed may be an item of the first library. */
struct facts {
  std::string ident;
  texts held[attribute_count];
  uint32_t item = 0;
};
using library = std::vector<facts>;
facts make_facts(std::mt19937& random, std::string ident = "");
/* What a statement may say: of names, and of what lists hold. The first of these media hold, too:
 * numbers, among them the tempos at either side of a band's ends. */
inline const texts words[2] = {
    {"Abba", "abb", "Abbey Road", "b", "Bb", "abc", "abd", "ABD", "a", "Roads", "road", "x", "y"},
    {"7001", "7002", "7011", "7012",  "7111",   "7112",   "7121", "7099",       "37",
     "110",  "1984", "1985", "1996",  "99",     "100",    "104",  "105",        "112",
     "113",  "119",  "120",  "Other", "Coarse", "Middle", "Fine", "Third fine", "nowhere"}};
inline constexpr uint32_t held_words[] = {13, 21};

struct criterion {
  zvsdk_status refusal = 0; /* of the whole statement */
  bool silent = false;      /* the seed has nothing to compare with */
  uint32_t id = 0, level = 0, lower = 0, upper = 0;
  texts names = {};
  std::vector<uint32_t> moods = {}; /* of a seed's profile */
};
/* One condition or score: what `kind` says uses the fields behind it. */
struct expression {
  enum kind_of { compare, reversed, score_compare, logic, arithmetic, number, random };
  kind_of kind = number;
  std::string shown, op = ""; /* the whole as text; = LIKE AND + ... */
  std::unique_ptr<expression> left = nullptr, right = nullptr;
  attribute of = tempo;
  std::string text = "";             /* the criterion, or SEED; of IN ",1,2," */
  int32_t value = 0;                 /* a number; the maximum of a RAND */
  std::optional<uint32_t> seed = {}; /* of a RAND that has its own; then its generator's state */
  criterion wanted = {};             /* of a comparison, when the statement is run */
};
using expression_ptr = std::unique_ptr<expression>;

/* The criterion of a comparison by its text, or by a seed if there is one. */
criterion make_criterion(const expression& of, const facts* seed);
/* The score of one value. A comparison that cannot be made has a failure. */
int32_t compare(const expression& of, const std::string& value, zvsdk_status& failure);
inline constexpr int32_t ignored = -10001;

/* Limits are per attribute or, without one, of a count. No two have the same number. */
struct statement {
  expression_ptr where, order;
  std::vector<std::pair<std::optional<attribute>, uint32_t>> limits;
  std::string text;
};
statement make_statement(std::mt19937& random);

/* "ident:score ident:score ..." for a statement over libraries in order, or "status ...". `random`
 * is the state of the generator, the seed may be null. The statement's own state moves on. */
std::string run(statement& of, const std::vector<library>& libraries, const facts* seed,
                uint32_t random);

}  // namespace reference

#endif
