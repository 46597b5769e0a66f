// The file layer: many files on few descriptors, from several threads, against texts in memory.

#include "support/zcsl_fs.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "support/zcsl_fs_mgr.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_owners.h"
#include "tests/common/failing_memory.h"
#include "tests/support/other_thread.h"

namespace {

using std::filesystem::path;
using file_owner = zcsl_owner<zcsl_fs_file, zcsl_fs_file_close>;
using marker_owner = zcsl_owner<zcsl_fs_marker, zcsl_fs_marker_delete>;

constexpr uint32_t s_end = 0x10030361;
constexpr uint32_t s_both = zcsl_fs_flag_read | zcsl_fs_flag_write;
constexpr uint32_t s_made = s_both | zcsl_fs_flag_create;

file_owner open(const path& where, uint32_t flags = s_made) {
  file_owner file;
  EXPECT_EQ(0u, zcsl_fs_file_open(where.c_str(), flags, 0600, file.out())) << where;
  return file;
}

class fs_test : public testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/zcsl_fs_XXXXXX";
    folder = mkdtemp(pattern);
    ASSERT_EQ(0u, zcsl_fs_initialize());
  }
  void TearDown() override {
    EXPECT_EQ(0u, zcsl_fs_shutdown()) << "nothing is left open";
    std::filesystem::remove_all(folder);
  }

  void limit(const char* count) { ASSERT_EQ(0u, zcsl_fs_option_set("zcsl_fs_max_handles", count)); }
  file_owner make(const std::string& name) { return open(folder / name); }
  // The files that have a descriptor, with its number.
  std::multimap<std::string, int> really_open() {
    std::multimap<std::string, int> found;
    const zcsl_critsec_guard nothing_moves(_zcsl_fs_mgr_lock());
    for (const auto& link : std::filesystem::directory_iterator("/proc/self/fd")) {
      std::error_code gone;
      const path target = std::filesystem::read_symlink(link, gone);
      if (target.parent_path() != folder) continue;
      found.emplace(target.filename(), std::stoi(link.path().filename()));
    }
    return found;
  }
  std::string open_names() {
    std::string names;
    for (const auto& [name, number] : really_open()) names += name;
    return names;
  }

  failing_memory memory;
  path folder;
};

int32_t stop_at_once(void*, const char*, uint8_t) {
  return 0;
}

std::string read(zcsl_fs_file* file, uint32_t size, uint32_t expected = 0) {
  std::string text(size, '?');
  uint32_t done = 99;
  EXPECT_EQ(expected, zcsl_fs_file_read(file, text.data(), size, &done));
  return text.substr(0, done);
}

uint32_t write(zcsl_fs_file* file, const std::string& text) {
  return zcsl_fs_file_write(file, text.data(), static_cast<uint32_t>(text.size()), nullptr);
}

uint64_t tell(zcsl_fs_file* file) {
  uint64_t position = 99;
  EXPECT_EQ(0u, zcsl_fs_file_tell(file, &position));
  return position;
}

TEST_F(fs_test, the_longest_idle_file_gives_its_descriptor_up) {
  std::map<char, file_owner> files;
  const auto steps = [&](const char* names) {
    for (; *names; ++names) {
      file_owner& file = files[*names];
      file ? (void)tell(file.get()) : (void)(file = make({*names}));
    }
  };
  const struct {
    const char *max, *used, *held;
  } rows[] = {{"2", "abc", "bc"}, {"2", "a", "ac"},   {"2", "cb", "bc"},   {"0", "a", "abc"},
              {"0", "d", "abcd"}, {"2", "", "ad"},    {"1", "", "d"},      {"1", "b", "b"},
              {"3", "ca", "abc"}, {"x", "d", "abcd"}, {"-1", "e", "abcde"}};
  for (const auto& row : rows) {
    limit(row.max);
    steps(row.used);
    EXPECT_EQ(row.held, open_names()) << row.max << row.used;
    EXPECT_EQ(open_names().size(), g_fs_num_file_handles);
  }
  const char* value = nullptr;
  EXPECT_EQ(0u, zcsl_fs_option_get("zcsl_fs_max_handles", &value));
  EXPECT_STREQ("4294967295", value);
  EXPECT_EQ(0x90030001u, zcsl_fs_option_get("zcsl_fs_max_handles", nullptr));
  for (const char* key : {"ZCSL_fs_max_handles", "", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(0x90030001u, zcsl_fs_option_get(key, &value));
    EXPECT_EQ(0x90030001u, zcsl_fs_option_set(key, "1"));
  }
  EXPECT_EQ(0x90030006u, zcsl_fs_shutdown()) << "files are open";
}

// One file and what should be in it.
struct model {
  path where;
  file_owner file;
  std::string text;
  uint64_t position = 0;
  bool append = false;
};

void random_operation(model& it, std::mt19937& random) {
  const uint32_t choice = random() % 7, origin = random() % 3, size = 1 + random() % 3000;
  const uint64_t target = random() % (it.text.size() + 100);
  zcsl_fs_file* file = it.file.get();
  uint64_t number = 0;
  if (choice < 2) {
    const std::string added(size, static_cast<char>('a' + random() % 26));
    if (it.append) it.position = it.text.size();
    it.text.resize(std::max(it.text.size(), it.position + size));
    it.text.replace(it.position, size, added);
    it.position += size;
    ASSERT_EQ(0u, write(file, added));
  } else if (choice < 4) {
    const std::string expected = it.text.substr(std::min(it.position, it.text.size()), size);
    ASSERT_EQ(expected, read(file, size, expected.empty() ? s_end : 0));
    it.position += expected.size();
  } else if (choice < 5) {
    const uint64_t bases[] = {0, it.position, it.text.size()};
    const auto offset = static_cast<int64_t>(target - bases[origin]);
    ASSERT_EQ(0u, zcsl_fs_file_seek(file, offset, origin, &number));
    ASSERT_EQ(it.position = target, number);
  } else if (choice < 6) {
    it.text.resize(target);
    ASSERT_EQ(0u, zcsl_fs_file_truncate(file, target));
  } else {
    it.append = origin == 0, it.position = 0;
    ASSERT_EQ(0u, zcsl_fs_file_close(it.file.release()));
    it.file = open(it.where, s_both | (it.append ? zcsl_fs_flag_append : 0));
  }
  ASSERT_EQ(it.position, tell(it.file.get()));
  ASSERT_EQ(0u, zcsl_fs_file_size(it.file.get(), &number));
  ASSERT_EQ(it.text.size(), number);
}

TEST_F(fs_test, threads_with_many_files_on_two_descriptors_lose_no_byte) {
  limit("2");
  model models[20];
  for (model& it : models) it.file = open(it.where = folder / std::to_string(&it - models));
  const auto work = [&](uint32_t first) {
    std::mt19937 random(first);
    for (int step = 0; step < 1500 && !HasFailure(); ++step) {
      random_operation(models[first + random() % 5], random);
      EXPECT_TRUE(step % 50 || really_open().size() <= 2);
    }
  };
  for (const other_thread& each : {run([&] { work(0); }), run([&] { work(5); }),
                                   run([&] { work(10); }), run([&] { work(15); })})
    each.wait();
  for (const model& it : models) {
    std::ifstream stream(it.where, std::ios::binary);
    EXPECT_EQ(it.text, std::string(std::istreambuf_iterator<char>(stream), {}));
  }
}

TEST_F(fs_test, one_file_in_several_threads_and_who_is_counted) {
  limit("1");
  marker_owner own, everybody, second;
  ASSERT_EQ(0u, zcsl_fs_marker_create(own.out(), 0));
  ASSERT_EQ(0u, zcsl_fs_marker_create(everybody.out(), 1));
  EXPECT_EQ(0x90030368u, zcsl_fs_marker_create(second.out(), 1)) << "there is one";
  const file_owner shared = make("shared"), other = make("other");
  make("closed").reset();
  const auto work = [&](char letter) {
    for (int i = 0; i < 200; ++i) {
      EXPECT_EQ(0u, write(shared.get(), std::string(10, letter)));
      tell(other.get());
    }
  };
  run([&] { work('b'); }).wait(), work('a');
  for (const auto& each : {run([&] { work('c'); }), run([&] { work('d'); })}) each.wait();
  EXPECT_EQ(0u, zcsl_fs_file_seek(shared.get(), 0, zcsl_fs_from_start, nullptr));
  for (int i = 0; i < 800; ++i) {
    const std::string record = read(shared.get(), 10);
    EXPECT_EQ(std::string(10, record[0]), record) << "writes go one after the other";
  }
  EXPECT_EQ("", read(shared.get(), 20, s_end));
  for (const auto& [marker, writes] : {std::pair(own.get(), 200u), {everybody.get(), 800u}}) {
    const zcsl_fs_metrics expected = {8000, 10, 800, writes * 10, 10, writes, 1, 3, 1, 1};
    zcsl_fs_metrics sum;
    ASSERT_EQ(0u, zcsl_fs_marker_get(marker, &sum));
    EXPECT_EQ(0, std::memcmp(&expected, &sum, sizeof sum)) << writes;
  }
}

TEST_F(fs_test, whoever_waits_is_woken) {
  const file_owner held[] = {make("a"), make("b")}, wanted[] = {make("c"), make("d")};
  const auto both_wait = [&](auto wake) {
    limit("2");
    for (const file_owner& file : held) ASSERT_EQ(0u, _zcsl_fs_mgr_acquire_fd(&file->entry));
    const other_thread waiting[] = {run([&] { tell(wanted[0].get()); }),
                                    run([&] { tell(wanted[1].get()); })};
    EXPECT_TRUE(still_blocked(waiting[0]) && still_blocked(waiting[1]));
    EXPECT_EQ(0x90030006u, zcsl_fs_file_close(wanted[0].get())) << "waited for";
    EXPECT_EQ(0x90030006u, zcsl_fs_file_close(held[0].get())) << "in use";
    wake();
  };
  const auto release = [&] {
    const zcsl_critsec_guard together(_zcsl_fs_mgr_lock());  // two signals that become one
    for (const file_owner& file : held) _zcsl_fs_mgr_release_fd(&file->entry);
  };
  both_wait(release);
  both_wait([&] { limit("4"); });
  EXPECT_EQ("abcd", open_names());
  limit("1");
  EXPECT_EQ("ab", open_names()) << "in use";
  release();
  EXPECT_EQ("b", open_names());
}

TEST_F(fs_test, files_that_cannot_come_back) {
  limit("1");
  const auto make_here = [](const char* name) {
    file_owner file = open(name, s_made | zcsl_fs_flag_truncate);
    EXPECT_EQ(0u, write(file.get(), "text"));
    return file;
  };
  const path at_start = std::filesystem::current_path();
  std::filesystem::current_path(folder);
  const file_owner lost[] = {make_here("removed"), make_here("renamed"), make_here("replaced")};
  const file_owner kept = make_here("kept");
  std::filesystem::current_path(at_start);
  std::filesystem::remove(folder / "removed");
  std::filesystem::rename(folder / "renamed", folder / "new");
  usleep(30000);  // times of creation are told apart by clock ticks
  make("newer").reset();
  std::filesystem::rename(folder / "newer", folder / "replaced");
  for (const file_owner& file : lost) {
    uint64_t size = 0;
    EXPECT_EQ(0x90030003u, zcsl_fs_file_size(file.get(), &size));
    EXPECT_EQ(0u, g_fs_num_file_handles) << "the place is free again";
    EXPECT_EQ(4u, tell(kept.get())) << "in the folder where it was opened";
  }
  std::filesystem::rename(folder / "new", folder / "renamed");
  EXPECT_EQ(0u, write(lost[1].get(), "!"));
  EXPECT_EQ(0u, zcsl_fs_file_seek(lost[1].get(), 0, zcsl_fs_from_start, nullptr));
  EXPECT_EQ("text!", read(lost[1].get(), 9)) << "not truncated again";
  // A close that fails, as it may on a network: the descriptor goes behind the pool's back.
  ::close(really_open().begin()->second);
  EXPECT_EQ(0x9003003Eu, write(kept.get(), "!"));
  EXPECT_EQ(0u, write(kept.get(), "!"));
  for (const uint32_t expected : {0x9003003Eu, 0u}) {
    EXPECT_EQ(expected, zcsl_fs_file_flush(lost[1].get())) << "told once";
  }
  EXPECT_EQ(1u, g_fs_num_file_handles);
}

TEST_F(fs_test, errors_half_way_and_positions_far_out) {
  limit("1");
  const auto page = static_cast<uint32_t>(sysconf(_SC_PAGESIZE));
  const std::string text(page + 1, 'x');
  const file_owner file = make("file");
  const file_owner self = open("/proc/self/mem", zcsl_fs_flag_read);  // reads of no page fail
  uint32_t done = 0;
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = signal(SIGXFSZ, SIG_IGN);
  const rlimit full = {page, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  const uint32_t written = zcsl_fs_file_write(file.get(), text.data(), page + 1, &done);
  const uint32_t lengthened = zcsl_fs_file_truncate(file.get(), 2 * page);
  setrlimit(RLIMIT_FSIZE, &before);
  signal(SIGXFSZ, handler);
  EXPECT_TRUE(written == 0x90030363 && lengthened == 0x90030363);
  EXPECT_EQ(page, done);
  EXPECT_EQ(page, tell(file.get()));
  void* map = mmap(nullptr, 2 * page, PROT_READ, MAP_PRIVATE, really_open().begin()->second, 0);
  const auto address = reinterpret_cast<intptr_t>(map);
  EXPECT_EQ(0u, zcsl_fs_file_seek(self.get(), address, zcsl_fs_from_start, nullptr));
  EXPECT_EQ(text.substr(1), read(self.get(), page + 1, 0x90030287));
  EXPECT_EQ(address + page, tell(self.get()));
  munmap(map, 2 * page);
  EXPECT_EQ(0u, zcsl_fs_file_seek(file.get(), INT64_MAX, zcsl_fs_from_start, nullptr));
  EXPECT_EQ(0x90030363u, write(file.get(), "x"));
  EXPECT_EQ("", read(file.get(), 1, s_end));
}

TEST_F(fs_test, names_and_directories) {
  using names = std::set<std::string>;  // each with its kind
  const path file = folder / "file", moved = folder / "moved", inner = folder / "inner";
  const auto found = [&] {
    names all;
    const auto collect = [](void* into, const char* name, uint8_t is_directory) -> int32_t {
      return static_cast<names*>(into)->insert(name + std::to_string(is_directory)).second;
    };
    EXPECT_EQ(0u, zcsl_fs_dir_enumerate(folder.c_str(), collect, &all));
    return all;
  };
  make("file").reset();
  EXPECT_EQ(0u, zcsl_fs_dir_create(inner.c_str(), 0700));
  EXPECT_EQ((names{"file0", "inner1"}), found());
  EXPECT_EQ(0u, zcsl_fs_file_rename(file.c_str(), moved.c_str()));
  for (const path& each : {file, moved, inner}) {
    uint8_t is[2] = {9, 9};
    EXPECT_EQ(0u, zcsl_fs_file_exists(each.c_str(), is) | zcsl_fs_dir_exists(each.c_str(), is + 1));
    EXPECT_TRUE(is[0] == (each == moved) && is[1] == (each == inner)) << each;
  }
  EXPECT_EQ(0u, zcsl_fs_file_remove(moved.c_str()) | zcsl_fs_dir_remove(inner.c_str()));
  EXPECT_EQ(names{}, found());
}

TEST_F(fs_test, what_is_refused) {
  limit("2");
  const path there = folder / "there", missing = folder / "missing", pipe = folder / "pipe";
  const file_owner writer = open(there, s_made - zcsl_fs_flag_read);
  const file_owner reader = open(there, zcsl_fs_flag_read);
  ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
  file_owner file;
  const auto refuse = [&](uint32_t code, const path& where, uint32_t flags, uint32_t mode = 0600) {
    EXPECT_EQ(0x90030000u | code, zcsl_fs_file_open(where.c_str(), flags, mode, file.out()))
        << where << flags;
  };
  for (uint32_t senseless : {0x00, 0x10, 0x41, 0x21, 0x05, 0x0B}) refuse(1, there, senseless);
  for (uint32_t flags : {1, 2, 3}) refuse(0x360, folder, flags), refuse(0x360, pipe, flags);
  refuse(1, there, s_made, 0400);
  refuse(1, "", s_both);
  refuse(3, missing, s_both);
  refuse(0x360, there / "x", s_both);
  refuse(0x368, there, s_made | zcsl_fs_flag_exclusive);
  uint64_t number = 0;
  uint32_t done = 0;
  char byte;
  uint64_t stale[100] = {};
  const std::pair<uint32_t, uint32_t> calls[] = {
      {0x284, zcsl_fs_file_read(writer.get(), &byte, 1, &done)},
      {0x284, write(reader.get(), "x")},
      {0x284, zcsl_fs_file_truncate(reader.get(), 0)},
      {0x363, zcsl_fs_file_truncate(writer.get(), UINT64_MAX)},
      {0x363, zcsl_fs_file_seek(reader.get(), -1, zcsl_fs_from_end, &number)},
      {1, zcsl_fs_file_read(reader.get(), nullptr, 1, &done)},
      {1, zcsl_fs_file_size(nullptr, &number)},
      {0x321, zcsl_fs_file_close(reinterpret_cast<zcsl_fs_file*>(stale))},
      {3, zcsl_fs_file_remove(missing.c_str())},
      {0x360, zcsl_fs_file_remove(folder.c_str())},
      {0x368, zcsl_fs_dir_remove(folder.c_str())},
      {0x368, zcsl_fs_dir_create(folder.c_str(), 0700)},
      {0x360, zcsl_fs_dir_enumerate(there.c_str(), stop_at_once, nullptr)},
  };
  for (const auto& [expected, status] : calls) EXPECT_EQ(0x90030000u | expected, status);
  EXPECT_EQ(0x100301A0u, zcsl_fs_dir_enumerate(folder.c_str(), stop_at_once, nullptr));
  EXPECT_EQ(really_open().size(), g_fs_num_file_handles) << "nothing refused has kept a place";
}

TEST_F(fs_test, without_memory) {
  const std::string where = (folder / "file").string();
  ASSERT_EQ(0u, zcsl_fs_shutdown());
  EXPECT_EQ(0x90030007u, zcsl_fs_option_set("zcsl_fs_max_handles", "1"));
  memory.for_each_failure([&] {
    if (zcsl_fs_initialize()) return;
    limit("1");
    marker_owner marker;
    file_owner file[2];
    zcsl_fs_marker_create(marker.out(), 1);
    for (file_owner& each : file) zcsl_fs_file_open(where.c_str(), s_made, 0600, each.out());
    const uint32_t walked = zcsl_fs_dir_enumerate(folder.c_str(), stop_at_once, nullptr);
    EXPECT_TRUE(!zvsdk_is_error(walked) || walked == 0x90030002);
    EXPECT_TRUE(!file[0] || !write(file[0].get(), "x"));
    for (file_owner& each : file) each.reset();
    marker.reset();
    EXPECT_EQ(0u, g_fs_num_file_handles);
    EXPECT_EQ(0u, zcsl_fs_shutdown());
  });
  ASSERT_EQ(0u, zcsl_fs_initialize());
}

}  // namespace
