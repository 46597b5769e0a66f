// Changing, counting, storing.
#include "tools/update.h"

#include <csignal>

#include "tools/collection.h"
#include "tools/command.h"
#include "tools/interrupt.h"
#include "tools/output.h"

namespace zvplaylist {
namespace {

using std::chrono::steady_clock;

// How much work may be lost, and how many times as long as storing the work in between takes.
constexpr auto shortest_interval = std::chrono::milliseconds(500);
constexpr int work_to_storing = 10;

const std::string& checked(const std::string& name) {
  check_name(name);
  return name;
}

}  // namespace

collection_update::collection_update(const update_options& options)
    : name_(checked(options.name)),
      out_(console::standard(options.quiet)),
      session_(options.language),
      store_(options.store),
      lock_(store_.folder(), {name_}, out_),
      next_save_(steady_clock::now() + shortest_interval) {
  store_.require_distinct(name_);
  saved_ = store_.has(name_);
  session_.open(saved_ ? store_.load(name_) : new_collection(name_));
  for (std::string& ident : idents_of(session_.own())) held_.insert(std::move(ident));
  note_interrupts();
}

void collection_update::put(track&& entry, const place& where) {
  if (is_hidden(entry.ident)) {
    count_unchanged();
    return out_.report(outcome::skipped, where, hidden_text(entry.ident) + "; it stays as it was");
  }
  const bool known = session_.holds(entry.ident);
  saved_ = false;
  try {
    for (const std::string& unknown : known ? session_.replace(entry) : session_.add(entry))
      out_.report_repeated(outcome::mended, where, unknown);
  } catch (const library_error& error) {
    return out_.report(outcome::skipped, where, error.what());
  }
  held_.insert(std::move(entry.ident));
  ++(known ? changed_ : added_);
}

void collection_update::remove(const std::string& ident) {
  if (!session_.holds(ident))
    return out_.report(outcome::skipped, {name_}, hidden_text(ident) + "; it stays");
  saved_ = false;
  session_.remove(ident);
  held_.erase(ident);
  ++removed_;
}

void collection_update::pause() {
  if (interrupted_by() == 0 && steady_clock::now() < next_save_) return;
  save();
  if (interrupted_by() != 0)
    throw failure(interrupted_by() == SIGINT ? exit_interrupted : exit_terminated,
                  "interrupted; '" + name_ + "' is stored with " + std::to_string(session_.size()) +
                      " tracks, and the same command goes on from there");
}

// An empty collection is stored when it has become so, not when it was never filled.
void collection_update::save() {
  const auto start = steady_clock::now();
  if (!saved_ && added_ + changed_ + removed_ != 0) {
    for (const std::string& ident : session_.settle()) {
      out_.report(outcome::skipped, {name_}, hidden_text(ident) + "; it stays as it was");
      --changed_;
      count_unchanged();
    }
    store_.put(session_.own());
    saved_ = true;
  }
  const auto end = steady_clock::now();
  next_save_ =
      end + std::max<steady_clock::duration>(shortest_interval, work_to_storing * (end - start));
}

void collection_update::finish() {
  pause();
  save();
  out_.summarize_repeated();
  out_.clear();
  write_output("-", name_ + ": " + std::to_string(added_) + " added, " + std::to_string(removed_) +
                        " removed, " + std::to_string(changed_) + " changed, " +
                        std::to_string(unchanged_) + " unchanged; " +
                        std::to_string(session_.size()) + " tracks\n");
}

}  // namespace zvplaylist
