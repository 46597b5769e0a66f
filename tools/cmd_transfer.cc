// zvplaylist export and load: a collection as a file of its own, and back.
#include <cerrno>
#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstring>
#include <memory>

#include "tools/atomic_file.h"
#include "tools/collection.h"
#include "tools/options.h"
#include "tools/output.h"
#include "tools/shelf.h"
#include "tools/store_lock.h"

namespace zvplaylist {
namespace {

struct transfer_options {
  std::string store, name, file;
  bool force = false;
};

exit_code run_export(const transfer_options& options) {
  const shelf all(options.store);
  const std::string bytes = bytes_of(all.kept.load(options.name).get());
  if (options.file == "-")
    write_output("-", bytes);
  else
    write_whole_file(options.file, bytes, options.force);
  return exit_fine;
}

std::string read_whole_file(const std::string& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             std::fclose);
  std::string bytes;
  char block[1 << 16];
  for (size_t size = 1; file != nullptr && size != 0; bytes.append(block, size))
    size = std::fread(block, 1, sizeof block, file.get());
  if (file == nullptr || std::ferror(file.get()) != 0)
    throw failure(exit_bad_input, "cannot read " + path + ": " + std::strerror(errno));
  return bytes;
}

unique_collection read_collection(const std::string& path) {
  try {
    return collection_of(read_whole_file(path));
  } catch (const library_error& error) {
    throw failure(exit_bad_input,
                  path + " is no collection that zvplaylist export wrote: " + error.what());
  }
}

exit_code run_load(const transfer_options& options) {
  shelf all(options.store);
  const unique_collection collection = read_collection(options.file);
  const std::string name = options.name.empty() ? name_of(collection.get()) : options.name;
  check_name(name);
  const store_lock lock(all.kept.folder(), {name}, all.out);
  all.kept.require_distinct(name);
  if (!options.force) all.kept.require_free(name);
  rename_collection(collection.get(), name);
  all.kept.put(collection.get());
  write_output("-", name + ": " + std::to_string(size_of(collection.get())) + " tracks\n");
  return exit_fine;
}

}  // namespace

action declare_export(CLI::App& app) {
  auto options = std::make_shared<transfer_options>();
  declare_store_option(app, options->store);
  app.add_option("NAME", options->name, "The collection")->required();
  app.add_option("FILE", options->file, "The file to write; - is standard output")->required();
  app.add_flag("--force", options->force, "Replace a file that is there");
  app.footer(
      "Example:\n"
      "  zvplaylist export music music.zvpl\n"
      "\n"
      "Exit codes: 0 fine, 1 no such collection, 2 usage or the file is there, 4 storage.");
  return [options] { return run_export(*options); };
}

action declare_load(CLI::App& app) {
  auto options = std::make_shared<transfer_options>();
  declare_store_option(app, options->store);
  app.add_option("FILE", options->file, "A file that zvplaylist export wrote")->required();
  app.add_option("--as", options->name, "Under this name, not the one that it had")
      ->type_name("NAME");
  app.add_flag("--force", options->force, "Replace a collection of that name");
  app.footer(
      "Example:\n"
      "  zvplaylist load music.zvpl --as old-music\n"
      "\n"
      "Exit codes: 0 fine, 2 usage or the name is taken, 3 the file holds no collection,\n"
      "4 storage.");
  return [options] { return run_load(*options); };
}

}  // namespace zvplaylist
