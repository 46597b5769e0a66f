// The baseline: what somebody would write with SQLite over one table of tracks, in memory, with
// prepared statements read to the end. The same tracks and the same questions as bench_playlist,
// each without and with an index where an index can serve.
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <map>

#include "benchmark_program.h"
#include "generated_library.h"

namespace {

void must(int code, sqlite3* database) {
  if (code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW) return;
  std::fprintf(stderr, "sqlite: %s\n", sqlite3_errmsg(database));
  std::exit(1);
}

void run(sqlite3* database, const char* sql) {
  must(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), database);
}

sqlite3_stmt* prepare(sqlite3* database, const char* sql) {
  sqlite3_stmt* statement = nullptr;
  must(sqlite3_prepare_v2(database, sql, -1, &statement, nullptr), database);
  return statement;
}

void insert_all(sqlite3* database, const generated_library& library) {
  run(database,
      "CREATE TABLE tracks(id INTEGER PRIMARY KEY, ident TEXT, title TEXT, artist TEXT, album TEXT,"
      " tempo INT, year INT, root INT, genre INT, country INT, valence REAL, energy REAL); BEGIN");
  sqlite3_stmt* insert = prepare(
      database,
      "INSERT INTO tracks(ident, title, artist, album, tempo, year, root, genre, country, valence,"
      " energy) VALUES(?,?,?,?,?,?,?,?,?,?,?)");
  for (const generated_track& track : library.tracks) {
    int column = 0;
    for (const std::string* text :
         {&track.ident, &track.title, &library.artists[track.artist], &library.albums[track.album]})
      sqlite3_bind_text(insert, ++column, text->data(), static_cast<int>(text->size()),
                        SQLITE_STATIC);
    for (uint32_t number :
         {track.tempo, track.year, generated_genres[track.genre].root, track.genre, track.country})
      sqlite3_bind_int(insert, ++column, static_cast<int>(number));
    for (float coordinate : {track.valence, track.energy})
      sqlite3_bind_double(insert, ++column, static_cast<double>(coordinate));
    must(sqlite3_step(insert), database);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  run(database, "COMMIT");
}

sqlite3* open_memory() {
  sqlite3* database = nullptr;
  must(sqlite3_open(":memory:", &database), database);
  run(database, "PRAGMA temp_store=MEMORY");
  return database;
}

sqlite3* database_of(uint32_t tracks, bool indexed) {
  static std::map<std::pair<uint32_t, bool>, sqlite3*> made;
  sqlite3*& database = made[{tracks, indexed}];
  if (database != nullptr) return database;
  database = open_memory();
  insert_all(database, generated_library_of(tracks));
  if (indexed)
    run(database,
        "CREATE INDEX by_tempo ON tracks(tempo); CREATE INDEX by_root ON tracks(root);"
        "CREATE INDEX by_year ON tracks(year); CREATE INDEX by_country ON tracks(country);"
        "CREATE INDEX by_artist ON tracks(artist COLLATE NOCASE); ANALYZE");
  return database;
}

void load(benchmark::State& state) {
  const generated_library& library = generated_library_of(static_cast<uint32_t>(state.range(0)));
  for (auto _ : state) {
    sqlite3* database = open_memory();
    insert_all(database, library);
    sqlite3_close(database);
  }
  count_per_track(state, static_cast<double>(library.tracks.size()));
}

void query(benchmark::State& state, const char* pattern, bool indexed) {
  const auto tracks = static_cast<uint32_t>(state.range(0));
  const std::string sql = with_popular_artist(pattern, generated_library_of(tracks));
  sqlite3* database = database_of(tracks, indexed);
  sqlite3_stmt* statement = prepare(database, sql.c_str());
  int64_t rows = 0;
  for (auto _ : state) {
    rows = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
      benchmark::DoNotOptimize(sqlite3_column_text(statement, 0));
      ++rows;
    }
    sqlite3_reset(statement);
  }
  sqlite3_finalize(statement);
  count_per_track(state, tracks);
  state.counters["results"] = static_cast<double>(rows);
}

struct question {
  const char* name;
  const char* sql;
};

#define AT_MOST_TWO_PER_ARTIST(score)                                                       \
  "WITH scored AS MATERIALIZED (SELECT ident, artist, " score                               \
  " AS score FROM tracks),"                                                                 \
  " ranked AS (SELECT ident, score, row_number() OVER (PARTITION BY artist ORDER BY score)" \
  " AS place FROM scored) SELECT ident FROM ranked WHERE place <= 2 ORDER BY score LIMIT 25"

constexpr question s_questions[] = {
    {"where_tempo_range", "SELECT ident FROM tracks WHERE tempo > 100 AND tempo < 140"},
    {"where_tempo_range_top25",
     "SELECT ident FROM tracks WHERE tempo > 100 AND tempo < 140 ORDER BY random() LIMIT 25"},
    {"where_tempo_none", "SELECT ident FROM tracks WHERE tempo > 250"},
    {"where_name_equal", "SELECT ident FROM tracks WHERE artist = '@' COLLATE NOCASE"},
    {"where_name_contains_common", "SELECT ident FROM tracks WHERE artist LIKE '%mar%' LIMIT 100"},
    {"where_name_contains_rare", "SELECT ident FROM tracks WHERE artist LIKE '%zqx%'"},
    {"where_genre_root", "SELECT ident FROM tracks WHERE root = 0"},
    {"where_era_span", "SELECT ident FROM tracks WHERE year BETWEEN 1980 AND 1989"},
    {"where_origin", "SELECT ident FROM tracks WHERE country IN (2, 3)"},
    {"where_mood",
     "SELECT ident FROM tracks WHERE valence BETWEEN 0.6 AND 0.8 AND energy BETWEEN 0.4 AND 0.6"},
    {"more_like_this",
     AT_MOST_TWO_PER_ARTIST("CASE genre WHEN 3 THEN 0 ELSE CASE root WHEN 0 THEN 200 ELSE 1000 END"
                            " END + abs(tempo - 120) * 5 + abs(valence - 0.5) * 400"
                            " + abs(energy - 0.5) * 400 + abs(year - 1990)")},
    {"random_order", "SELECT ident FROM tracks ORDER BY random()"},
    {"random_order_top25", "SELECT ident FROM tracks ORDER BY random() LIMIT 25"},
    {"two_per_artist_random_order", AT_MOST_TWO_PER_ARTIST("random()")},
    {"similar_tempo_two_per_artist",
     AT_MOST_TWO_PER_ARTIST("abs(tempo - 120) * 5 + abs(random() % 100)")},
};

void register_at(int64_t size) {
  benchmark::RegisterBenchmark("load", load)->Arg(size)->Unit(benchmark::kMillisecond);
  for (const question& asked : s_questions)
    for (bool indexed : {false, true})
      benchmark::RegisterBenchmark((std::string(asked.name) + (indexed ? "_indexed" : "")).c_str(),
                                   query, asked.sql, indexed)
          ->Arg(size)
          ->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
  return run_benchmarks(argc, argv, register_at);
}
