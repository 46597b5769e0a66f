// Stored collections in a real file: rows and names, what is refused, and kills.
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <atomic>
#include <cstring>

#include "collections/playlist_coll_storage.h"
#include "module/playlist_services.h"
#include "tests/collections/collection_fixture.h"
#include "tests/common/data_folder.h"
#include "tests/common/use_collection.h"

namespace {

const std::string s_ok = "#00000000", s_absent = "#10890003", s_missing = "#90890500";

std::string hex(zvsdk_status status) {
  char text[16];
  std::snprintf(text, sizeof text, "#%08X", status);
  return text;
}

const zvsdk_storage_interface* s_real = nullptr;
zvsdk_storage_interface s_faulty = {};

// The host knows its storage by its table, so what is called through another one passes its own.
void make_faulty(const zvsdk_storage_interface* real) {
  s_real = real;
  s_faulty = *real;
  s_faulty.storage_release = [](auto) { return s_real->storage_release(s_real); };
  s_faulty.table_open = [](auto, auto... rest) { return s_real->table_open(s_real, rest...); };
  s_faulty.table_create = [](auto, auto... rest) { return s_real->table_create(s_real, rest...); };
  s_faulty.transaction_begin = [](auto, auto out) {
    return s_real->transaction_begin(s_real, out);
  };
  s_faulty.schema_create = [](auto, auto out) { return s_real->schema_create(s_real, out); };
  s_faulty.record_create = [](auto, auto out) { return s_real->record_create(s_real, out); };
}

class coll_storage : public collection_test {
 protected:
  void SetUp() override {
    collection_test::SetUp();
    ASSERT_EQ(0u, playlist_storage_obtain(&service));
    api = service.get();
    ASSERT_EQ(0u, zvsdk_playlist_storage_location_set(folder.path().c_str()));
    ASSERT_EQ(0u, add("first", {"#1"}));
  }
  void TearDown() override {
    service.reset();
    collection_test::TearDown();
  }

  std::string store(playlist_collection* which = nullptr) {
    return hex(zvsdk_playlist_storage_store_collection(which ? which : collection));
  }
  std::string rename_and_store(const char* name) {
    EXPECT_EQ(0u, zvsdk_playlist_collection_update_name(collection, name));
    return store();
  }
  collection_ptr load(const char* name) {
    return collection_ptr(output_of(zvsdk_playlist_storage_load_collection, name));
  }
  /* The name and the number of idents of what is stored under a name, or the status. */
  std::string loaded(const char* name) {
    playlist_collection* read = nullptr;
    const zvsdk_status status = zvsdk_playlist_storage_load_collection(name, &read);
    if (status != 0) return hex(status) + (read != nullptr ? " and a collection" : "");
    const collection_ptr owner(read);
    return output_of(zvsdk_playlist_collection_get_name, read) + std::string(" ") +
           std::to_string(output_of(zvsdk_playlist_collection_ident_count, read));
  }
  static std::string counted() {
    uint32_t count = 77;
    const zvsdk_status status = zvsdk_playlist_storage_count_collections(&count);
    return (status == 0 ? "" : hex(status) + " ") + std::to_string(count);
  }
  static texts names() { return listed(zvsdk_playlist_storage_enum_collections); }
  static std::string removed(const char* name) {
    return hex(zvsdk_playlist_storage_remove_collection(name));
  }
  static void forget_names() { __atomic_store_n(&g_playlist_storage_dirty, 1, __ATOMIC_RELAXED); }

  /* The file by other means than the module's. */
  void put_row(const char* name, const std::string& data) {
    playlist_storage_table table(api);
    playlist_storage_record row(api);
    EXPECT_EQ(0u, _playlist_coll_storage_open(api, table.out()));
    EXPECT_EQ(0u, playlist_storage_record_named(api, name, row.out()));
    api->record_set_binary(row.get(), "coll_data", data.data(), static_cast<uint32_t>(data.size()),
                           ZVSDK_STORAGE_VALUE);
    EXPECT_EQ(0u, api->table_put(table.get(), row.get(), nullptr));
  }
  using columns = std::vector<std::tuple<const char*, uint32_t, uint32_t>>;
  void make_table(const columns& wanted) {
    playlist_storage_schema schema(api);
    playlist_storage_table table(api);
    api->schema_create(api, schema.out());
    for (const auto& [name, type, flags] : wanted)
      EXPECT_EQ(0u, api->schema_add_column(schema.get(), name, type, flags));
    EXPECT_EQ(0u, api->table_create(api, "zv_colls.zdb", "zvsdk_collection", folder.path().c_str(),
                                    nullptr, schema.get(), table.out()));
  }
  texts file_info() {
    playlist_storage_table table(api);
    playlist_storage_record row(api);
    playlist_storage_cursor rows(api);
    api->table_open(api, "zv_colls.zdb", "zdb_info", folder.path().c_str(), 1, table.out());
    api->record_create(api, row.out());
    api->record_set_string(row.get(), "param", nullptr, ZVSDK_STORAGE_EVERY);
    api->table_find(table.get(), row.get(), nullptr, rows.out());
    texts found;
    while (api->cursor_next(rows.get(), row.out()) == 0)
      found.push_back(output_of(api->record_get_string, row.get(), "param") + std::string("=") +
                      output_of(api->record_get_string, row.get(), "value"));
    return found;
  }

  /* Works with another answer of the host to who asks for an interface. */
  template <class Work>
  void with_host(decltype(zvsdk_sdkmanager::interface_get) interface_get, Work work) {
    zvsdk_sdkmanager other = *manager;
    other.interface_get = interface_get;
    zvsdk_sdkmanager* with = std::exchange(g_playlist_sdkmanager_interface, &other);
    work();
    g_playlist_sdkmanager_interface = with;
  }
  /* Stores with the host's storage as `change` alters its table. */
  template <class Change>
  std::string store_with(Change change) {
    make_faulty(api);
    change(s_faulty);
    std::string outcome;
    with_host(
        [](const char*, void*, void*, void** table) { return *table = &s_faulty, zvsdk_status{0}; },
        [&] { outcome = store(); });
    return outcome;
  }

  data_folder folder{quick_folder()};
  playlist_storage_service service;
  const zvsdk_storage_interface* api = nullptr;
};

TEST_F(coll_storage, keeps_one_row_for_a_collection_through_its_names) {
  EXPECT_EQ(s_missing, loaded("main"));
  EXPECT_EQ(s_missing, removed("main"));
  EXPECT_EQ(s_ok, store());
  EXPECT_EQ((texts{"zvsdk_product_version=3.08.6.5437", "zvsdk_library_version=3.10.5",
                   "zvsdk_zdb_format=1.0.0"}),
            file_info());
  EXPECT_EQ("main 1", loaded("main"));
  EXPECT_EQ(s_absent, loaded("MAIN"));
  EXPECT_STREQ("collection 'MAIN' not found", last_error().message);

  add("second", {"text"});
  EXPECT_EQ(s_ok, rename_and_store("new"));
  EXPECT_EQ(s_absent, loaded("main"));
  {
    const collection_ptr read = load("new");
    EXPECT_EQ(serialized(collection), serialized(read.get()));
    EXPECT_STREQ("25", output_of(zvsdk_playlist_morelikethis_option_get, read.get(),
                                 ZVSDK_PLAYLIST_OPTION_MAX_TRACKS));
    EXPECT_EQ(s_ok, store(read.get()));
    EXPECT_EQ("1", counted());
    zvsdk_playlist_collection_update_name(read.get(), "renamed");
    EXPECT_EQ(s_ok, store(read.get())) << "knows its row from the load";
  }
  EXPECT_EQ(texts{"renamed"}, names());
  const collection_ptr other(output_of(zvsdk_playlist_collection_create, "renamed"));
  EXPECT_EQ(s_ok, store(other.get())) << "its name is taken";
  EXPECT_EQ("renamed 0", loaded("renamed"));
  EXPECT_EQ(s_ok, store()) << "its row is gone";
  EXPECT_EQ((texts{"renamed", "new"}), names());
  EXPECT_EQ(s_ok, removed("renamed"));
  EXPECT_EQ(s_absent, removed("renamed"));
  EXPECT_EQ(0u, zvsdk_playlist_storage_compact());
  EXPECT_EQ(texts{"new"}, names());
  forget_names();
  EXPECT_EQ(texts{"new"}, names());

  // What the name in the data is does not find a row.
  put_row("alias", serialized(other.get()));
  EXPECT_EQ(s_ok, store(load("alias").get()));
  forget_names();
  EXPECT_EQ((texts{"new", "renamed"}), names());
}

TEST_F(coll_storage, reads_the_names_once) {
  uint32_t listed = 1;
  EXPECT_EQ(s_ok, store());
  EXPECT_EQ(s_ok, removed("main"));
  EXPECT_EQ(s_ok, store());
  EXPECT_EQ(0u, zcsl_stringmap_count(g_playlist_storage_names, &listed));
  EXPECT_EQ(0u, listed) << "nobody has asked yet";
  EXPECT_EQ("1", counted());
  put_row("by others", "");
  ASSERT_EQ(0u, zvsdk_playlist_storage_location_set((folder.path() + "/none").c_str()));
  EXPECT_EQ(texts{"main"}, names());
  const char* name = nullptr;
  EXPECT_EQ(playlist_warn_end_of_list, zvsdk_playlist_storage_enum_collections(1, &name));
  ASSERT_EQ(0u, zvsdk_playlist_storage_location_set(folder.path().c_str()));
  EXPECT_EQ("#10890003", removed("by others")) << "gone, but was not in the list";
  EXPECT_EQ("#10890003", loaded("by others"));
}

TEST_F(coll_storage, adds_the_first_name_to_the_list_of_a_missing_file) {
  EXPECT_EQ("0", counted());
  EXPECT_EQ(s_ok, store());
  EXPECT_EQ(texts{"main"}, names());
}

TEST_F(coll_storage, makes_a_table_of_another_shape_anew) {
  const columns shapes[] = {
      {{"coll_name", 1, 3}},
      {{"coll_name", 1, 3}, {"coll_data", 3, 0}, {"more", 1, 0}},
      {{"coll_data", 3, 0}, {"coll_name", 1, 3}},
      {{"coll_name", 1, 0}, {"coll_data", 3, 0}},
      {{"coll_name", 3, 3}, {"coll_data", 3, 0}},
      {{"coll_name", 1, 3}, {"coll_data", 1, 0}},
      {{"coll_name", 1, 3}, {"coll_data", 3, 4}},
      {{"coll_name", 1, 3}, {"coll data", 3, 0}},
  };
  for (const columns& shape : shapes) {
    SCOPED_TRACE(&shape - shapes);
    make_table(shape);
    EXPECT_EQ("#90890501", loaded("main"));
    EXPECT_EQ(s_missing, loaded("main"));
    make_table(shape);
    EXPECT_EQ(s_ok, store());
    EXPECT_EQ("main 1", loaded("main"));
    api->table_drop(api, "zv_colls.zdb", "zvsdk_collection", folder.path().c_str());
  }
  EXPECT_EQ(3u, file_info().size()) << "told once";
  make_table(shapes[0]);
  EXPECT_EQ("#90890501", removed("main"));
  make_table(shapes[0]);
  EXPECT_EQ("#90890501 77", counted());
  make_table({{"COLL_NAME", 1, 3}, {"Coll_Data", 3, 0}});
  put_row("kept", serialized(collection));
  EXPECT_EQ("main 1", loaded("kept"));
}

TEST_F(coll_storage, keeps_the_old_row_where_the_new_one_cannot_be_written) {
  EXPECT_EQ(s_ok, store());
  EXPECT_EQ("1", counted());
  add(std::string(200000, 'x'), {});
  rlimit limit = {};
  getrlimit(RLIMIT_FSIZE, &limit);
  const auto handler = signal(SIGXFSZ, SIG_IGN);
  for (const rlim_t bytes : {4096, 100000}) {  // the journal, then the file
    const rlimit small = {bytes, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_EQ("#90890506", rename_and_store("new")) << bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ("main 1", loaded("main"));
    EXPECT_EQ(texts{"main"}, names());
  }
  signal(SIGXFSZ, handler);
  EXPECT_EQ(s_ok, store());
  EXPECT_EQ(texts{"new"}, names()) << "still knew its old row";

  zvsdk_playlist_storage_location_set((folder.path() + "/none").c_str());
  EXPECT_EQ("#90890501", store());
  forget_names();
  EXPECT_EQ("#90890501 77", counted());
  EXPECT_EQ("#90890501 77", counted()) << "asks again";
}

TEST_F(coll_storage, replaces_no_row_that_it_has_found_and_cannot_read) {
  const auto stored = [&](const char* name, decltype(s_faulty.cursor_next) next) {
    EXPECT_EQ(0u, zvsdk_playlist_collection_update_name(collection, name));
    return store_with([&](auto& table) { table.cursor_next = next; });
  };
  EXPECT_EQ(s_ok, store());
  EXPECT_EQ("1", counted());
  EXPECT_EQ("#90890504", stored("new", [](auto*, auto**) { return zvsdk_status{0x90800504}; }));
  EXPECT_EQ(texts{"main"}, names());
  EXPECT_EQ(s_ok, store()) << "still knew its old row";
  forget_names();
  EXPECT_EQ(texts{"new"}, names());
  EXPECT_EQ(s_ok, stored("newer", [](auto*, auto**) { return zvsdk_status{0x10800503}; }))
      << "as if somebody had removed it";
  EXPECT_EQ("newer 1", loaded("newer"));
}

TEST_F(coll_storage, goes_on_where_the_file_cannot_be_told_about) {
  log_capture log(zcsl_log_error);
  EXPECT_EQ(s_ok, store_with([](auto& table) {
              table.transaction_commit = [](zvsdk_storage_transaction* made) {
                s_real->transaction_rollback(made);
                return zvsdk_status{0x90890507};
              };
            }));
  EXPECT_EQ(texts{"1 90890507 playlist_coll_storage: "}, log.take());
  EXPECT_EQ(texts{}, file_info());
  EXPECT_EQ("main 1", loaded("main"));
}

TEST_F(coll_storage, stores_an_empty_row_of_what_cannot_be_serialized) {
  const playlist_attr_data stray = {.value = 1, .ident_ref = 77};
  EXPECT_EQ(0u, zcsl_vector2_add(info().records, &stray, sizeof stray, nullptr));
  zvsdk_playlist_collection_add_ident(collection, "gone");
  EXPECT_EQ(0u, zvsdk_playlist_collection_ident_remove(collection, "gone"));
  EXPECT_EQ(s_ok, store());
  EXPECT_EQ("#90890122", loaded("main"));
  EXPECT_EQ(texts{"main"}, names()) << "stays";
}

TEST_F(coll_storage, examines_the_file) {
  zvsdk_storage_info info;
  log_capture log(zcsl_log_information | zcsl_log_error);
  const auto validated = [&] {
    std::memset(&info, 0xFF, sizeof info);
    info.size = sizeof info;
    return zvsdk_playlist_storage_validate(&info);
  };
  const std::string said = "4 00890000 zvsdk_playlist_storage_validate: Playlist local database ";
  EXPECT_EQ(0u, validated());
  EXPECT_EQ(texts{said + "not found. Checked location '" + folder.path() + "'."}, log.take());
  EXPECT_TRUE(info.size == sizeof info && info.exists == 0 && info.row_count == 0);
  EXPECT_EQ(playlist_error_no_memory, zvsdk_playlist_storage_location_set(nullptr));
  log.take();
  EXPECT_EQ(0u, validated());
  EXPECT_EQ(texts{said + "not found"}, log.take());

  zvsdk_playlist_storage_location_set(folder.path().c_str());
  EXPECT_EQ(s_ok, store());
  EXPECT_EQ(0u, validated());
  EXPECT_TRUE(info.exists == 1 && info.integrity == zvsdk_storage_whole && info.row_count == 4);
  folder.write("zv_colls.zdb", "of something else");
  EXPECT_EQ(0x90890502u, validated());
  EXPECT_TRUE(info.exists == 1 && info.readable == 0);
  EXPECT_EQ("#90890502", store());
  EXPECT_TRUE(has(last_error().message, "not a storage file"));
}

TEST_F(coll_storage, says_that_the_host_has_none) {
  zvsdk_storage_info info = {};
  const auto absent = [](const char*, void*, void*, void**) { return zvsdk_status{0x10800003}; };
  const auto is_told = [](const std::string& outcome) {
    EXPECT_TRUE(outcome.starts_with("#9089003F")) << outcome;
    EXPECT_STREQ("Storage provider is not enabled.", last_error().message);
    manager_errorinfo_set(0, 0, "", nullptr);
  };
  with_host(absent, [&] {
    is_told(store());
    is_told(loaded("main"));
    is_told(removed("main"));
    is_told(counted());
    is_told(hex(zvsdk_playlist_storage_compact()));
    is_told(hex(zvsdk_playlist_storage_validate(&info)));
  });
}

using storage_before_start = host_test;
TEST_F(storage_before_start, has_a_location_and_nothing_else) {
  const data_folder folder;
  zvsdk_storage_info info = {};
  manager_errorinfo_set(0x90890042, 0x90890042, "earlier", nullptr);
  EXPECT_EQ(playlist_error_no_storage, zvsdk_playlist_storage_compact());
  EXPECT_EQ(playlist_error_no_storage, zvsdk_playlist_storage_validate(&info));
  EXPECT_EQ(playlist_error_invalid_arg, zvsdk_playlist_storage_validate(nullptr));
  EXPECT_EQ(0u, zvsdk_playlist_storage_location_set((folder.path() + "/none").c_str()));
  EXPECT_EQ(0u, zvsdk_playlist_storage_location_set(folder.path().c_str()));
  EXPECT_STREQ("earlier", last_error().function);
  EXPECT_EQ(playlist_error_not_initialized, zvsdk_playlist_storage_remove_collection("main"));

  ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
  const collection_ptr made(output_of(zvsdk_playlist_collection_create, "main"));
  EXPECT_EQ(0u, zvsdk_playlist_storage_store_collection(made.get()));
  EXPECT_TRUE(std::filesystem::exists(folder.path() + "/zv_colls.zdb"));
}

// The child tells what it has stored; with three versions in turn a lost one shows.
TEST_F(coll_storage, survives_a_kill_at_any_moment) {
  EXPECT_EQ(s_ok, rename_and_store("other"));
  collection_ptr versions[3];
  std::string wanted[3];
  for (int i = 0; i < 3; ++i) {
    for (int more = 0; more < 1000 * i; ++more) add("more " + std::to_string(more), {"#7"});
    versions[i].reset(deserialized(serialized(collection)));
    zvsdk_playlist_collection_update_name(versions[i].get(), "kept");
    wanted[i] = serialized(versions[i].get());
  }
  EXPECT_EQ(s_ok, store(versions[0].get()));

  void* const shared =
      mmap(nullptr, sizeof(uint32_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(MAP_FAILED, shared);
  auto* const stored = new (shared) std::atomic<uint32_t>;
  uint32_t begun = 0;
  uint32_t interrupted = 0;
  srandom(1);
  for (int round = 0; round < 240 && !HasFailure(); ++round) {
    const pid_t child = fork();
    if (child == 0) {
      for (uint32_t i = *stored + 1;; *stored = i++) store(versions[i % 3].get());
    }
    usleep(static_cast<useconds_t>(random() % 25000));
    kill(child, SIGKILL);
    EXPECT_EQ(child, waitpid(child, nullptr, 0));
    interrupted += std::filesystem::exists(folder.path() + "/zv_colls.zdb-journal");
    forget_names();
    EXPECT_EQ((texts{"kept", "other"}), names());
    const std::string found = serialized(load("kept").get());
    const bool is_next = found == wanted[(*stored + 1) % 3];
    ASSERT_TRUE(is_next || found == wanted[*stored % 3]) << "neither old nor new, " << found.size();
    *stored += is_next;
    begun += is_next;
  }
  EXPECT_GT(stored->load(), 100u);
  EXPECT_GT(begun + interrupted, 5u) << "many a kill must come in the middle";
  munmap(shared, sizeof(uint32_t));
}

}  // namespace
