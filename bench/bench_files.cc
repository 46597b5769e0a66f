// What reading costs through the file layer: visits to 1,000 files, each a seek to the start and a
// read of 4 KiB, with and without a limit of descriptors, beside the platform's own calls.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "benchmark_program.h"
#include "library_session.h"
#include "support/zcsl_fs.h"
#include "temporary_folder.h"

namespace {

constexpr size_t s_files = 1000;
constexpr uint32_t s_block = 4096;

// The files, there for as long as the program runs.
struct file_folder {
  file_folder() {
    for (size_t i = 0; i < s_files; ++i) {
      paths.push_back(folder.path() + "/" + std::to_string(i));
      std::ofstream(paths.back()) << std::string(s_block, 'x');
    }
  }

  temporary_folder folder;
  std::vector<std::string> paths;
};

const std::vector<std::string>& paths() {
  static const file_folder files;
  return files.paths;
}

// An order of visits to all files.
using visits = std::vector<size_t>;

visits one_after_the_other() {
  visits order(s_files);
  for (size_t i = 0; i < s_files; ++i) order[i] = i;
  return order;
}

// Nine in ten visits go to the same 50 files.
visits mostly_the_same() {
  std::mt19937 random(7);
  visits order(s_files);
  for (size_t& file : order) file = random() % (random() % 10 == 0 ? s_files : 50);
  return order;
}

char s_buffer[s_block];

void read_from(int descriptor) {
  const bool read_all =
      lseek(descriptor, 0, SEEK_SET) == 0 && read(descriptor, s_buffer, s_block) == s_block;
  if (!read_all) must(0x80000000, "read");
}

void visit_all(benchmark::State& state, const visits& order, auto visit) {
  for (auto _ : state) {
    for (const size_t file : order) visit(file);
  }
  state.counters["per_read"] = benchmark::Counter(
      s_files, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void plain_open_read_close(benchmark::State& state, const visits& order) {
  visit_all(state, order, [](size_t file) {
    const int descriptor = open(paths()[file].c_str(), O_RDONLY | O_CLOEXEC);
    read_from(descriptor);
    close(descriptor);
  });
}

void plain_read(benchmark::State& state, const visits& order) {
  std::vector<int> open_files;
  for (const std::string& path : paths())
    open_files.push_back(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  visit_all(state, order, [&](size_t file) { read_from(open_files[file]); });
  for (const int descriptor : open_files) close(descriptor);
}

void pool_read(benchmark::State& state, const visits& order, const char* limit) {
  must(zcsl_fs_option_set("zcsl_fs_max_handles", limit), "limit");
  std::vector<zcsl_fs_file*> open_files;
  for (const std::string& path : paths())
    must(zcsl_fs_file_open(path.c_str(), zcsl_fs_flag_read, 0, &open_files.emplace_back()), "open");
  visit_all(state, order, [&](size_t file) {
    uint32_t done = 0;
    must(zcsl_fs_file_seek(open_files[file], 0, zcsl_fs_from_start, nullptr), "seek");
    must(zcsl_fs_file_read(open_files[file], s_buffer, s_block, &done), "read");
  });
  for (zcsl_fs_file* file : open_files) must(zcsl_fs_file_close(file), "close");
}

void register_all(const std::string& suffix, const visits& order) {
  const auto add = [&](const char* name, auto function, auto... more) {
    benchmark::RegisterBenchmark((name + suffix).c_str(), function, order, more...);
  };
  add("plain_open_read_close", plain_open_read_close);
  add("plain_read", plain_read);
  add("pool_read", pool_read, "0");
  add("pool_read_limit_64", pool_read, "64");
}

// All files are open at once where there is no limit.
void raise_descriptors() {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace

int main(int argc, char** argv) {
  raise_descriptors();
  must(zcsl_fs_initialize(), "file layer");
  register_all("", one_after_the_other());
  register_all("_favourites", mostly_the_same());
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return zcsl_fs_shutdown() != 0;
}
