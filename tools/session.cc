// The life of the library, and its calls over the collections of a run.
#include "tools/session.h"

#include <algorithm>
#include <utility>

#include "tools/collection.h"
#include "tools/command.h"
#include "tools/stored_track.h"
#include "tools/term_choice.h"

namespace zvplaylist {
namespace {

constexpr uint32_t no_locale = 0x2D3;  // low word
// No stored collection has this name (store.h), so that it can be joined.
constexpr char own_name[] = "\x01";
// Copying a track costs as much as moving it up this often, where others are taken out before it.
constexpr size_t moves_to_copy = 1000;

unique_manager start_manager() {
  zvsdk_manager_config config{.size = sizeof config, .data_path = nullptr};
  zvsdk_sdkmanager* manager = nullptr;
  check(zvsdk_manager_create(&config, &manager), "starting the manager");
  return unique_manager(manager);
}

void load_locales(const std::string& language) {
  for (const char* group : {ZVSDK_LOCALE_PLAYLIST, ZVSDK_LOCALE_MUSIC}) {
    const zvsdk_status status =
        zvsdk_manager_locale_load(group, language.c_str(), nullptr, nullptr);
    if (zvsdk_low_word(status) == no_locale)
      throw failure(exit_usage, "--language " + language + ": there are eng, ger and fre");
    check(status, "loading the locale");
  }
}

// None is hidden (collection.h), so that a copy is whole.
bool finds_all(playlist_collection* collection, const std::vector<std::string>& idents) {
  return std::ranges::all_of(
      idents, [&](const std::string& ident) { return holds_ident(collection, ident); });
}

std::vector<ranked_ident> read_results(playlist_results* handle) {
  const unique_results results(handle);
  std::vector<ranked_ident> playlist;
  const char* ident = nullptr;
  for (uint32_t i = 0; zvsdk_playlist_results_enum(handle, i, &ident, nullptr) == 0; ++i) {
    int32_t score = 0;
    check(zvsdk_playlist_results_get_score(handle, i, &score), "reading a score");
    playlist.push_back({ident, score});
  }
  return playlist;
}

}  // namespace

session::module::module(zvsdk_sdkmanager* manager) {
  check(zvsdk_playlist_initialize(manager), "starting the library");
}

session::session(const std::string& language) : manager_(start_manager()) {
  load_locales(language);
  lists_ = std::make_unique<term_lists>(manager_.get(), language);
  module_ = std::make_unique<module>(manager_.get());
  register_details(manager_.get());
  zvsdk_user* user = nullptr;
  check(zvsdk_manager_user_create("zvplaylist", &user), "making a user");
  user_.reset(user);
  collection_ = new_collection(own_name);
  replaced_ = new_collection(own_name);
}

void session::open(unique_collection collection) {
  collection_ = std::move(collection);
  if (carries_every_attribute(own())) return;
  const std::vector<std::string> idents = idents_of(own());
  if (finds_all(own(), idents)) collection_ = copy_of(own(), idents);
}

void session::copy(playlist_collection* from, const std::vector<std::string>& idents,
                   playlist_collection* into) const {
  for (const std::string& ident : idents) {
    zvsdk_zdo* object = nullptr;
    check(zvsdk_playlist_collection_get_zdo(from, user_.get(), ident.c_str(), &object),
          "reading a track");
    check(zvsdk_playlist_collection_add_zdo(into, ident.c_str(), unique_zdo(object).get()),
          "copying a track");
  }
}

unique_collection session::copy_of(playlist_collection* collection,
                                   const std::vector<std::string>& idents) const {
  unique_collection copied = new_collection(name_of(collection));
  copy(collection, idents, copied.get());
  return copied;
}

// Each removal moves all that stay behind it.
unique_collection session::without(unique_collection collection,
                                   const std::unordered_set<std::string>& gone) const {
  const std::vector<std::string> idents = idents_of(collection.get());
  std::vector<std::string> stay;
  size_t moves = 0;
  for (size_t i = idents.size(); i-- > 0;) {
    if (gone.contains(idents[i]))
      moves += stay.size();
    else
      stay.push_back(idents[i]);
  }
  std::ranges::reverse(stay);
  if (moves > moves_to_copy * stay.size() && finds_all(collection.get(), stay))
    return copy_of(collection.get(), stay);
  for (size_t i = idents.size(); i-- > 0;)
    if (gone.contains(idents[i]) && holds_ident(collection.get(), idents[i]))
      remove_ident(collection.get(), idents[i]);
  return collection;
}

size_t session::join(unique_collection stored) {
  std::unordered_set<std::string> known;
  if (size() != 0)
    for (std::string& ident : idents_of(stored.get()))
      if (holds(ident)) known.insert(std::move(ident));
  stored_.push_back(without(std::move(stored), known));
  return known.size();
}

std::vector<std::string> session::add(const track& entry) {
  return add_to(own(), entry);
}

std::vector<std::string> session::add_to(playlist_collection* collection, const track& entry) {
  chosen_terms terms = choose_terms(*lists_, entry);
  const unique_zdo object = object_of(entry, terms);
  if (holds_ident(collection, entry.ident)) remove_ident(collection, entry.ident);
  check(zvsdk_playlist_collection_add_zdo(collection, entry.ident.c_str(), object.get()),
        "adding a track");
  return std::move(terms.unknown);
}

void session::remove(const std::string& ident) {
  for (playlist_collection* each : {replaced_.get(), own()})
    if (holds_ident(each, ident)) remove_ident(each, ident);
}

// An ident that came meanwhile, or a removal, may hide others (collection.h). What cannot be read
// is not taken out, and what could not be taken out is not added again.
std::vector<std::string> session::settle() {
  std::vector<std::string> fresh = idents_of(replaced_.get());
  if (fresh.empty()) return {};
  const auto hidden = std::ranges::stable_partition(
      fresh, [&](const std::string& ident) { return holds_ident(replaced_.get(), ident); });
  std::vector<std::string> stayed(hidden.begin(), hidden.end());
  fresh.erase(hidden.begin(), hidden.end());
  collection_ = without(std::move(collection_), {fresh.begin(), fresh.end()});
  const std::vector<std::string> left = idents_of(own());
  const std::unordered_set<std::string_view> there(left.begin(), left.end());
  for (std::string& ident : fresh)
    if (there.contains(ident)) stayed.push_back(std::exchange(ident, {}));
  std::erase(fresh, "");
  copy(replaced_.get(), fresh, own());
  replaced_ = new_collection(own_name);
  return stayed;
}

std::vector<playlist_collection*> session::all() const {
  std::vector<playlist_collection*> collections = {replaced_.get(), own()};
  for (const unique_collection& each : stored_) collections.push_back(each.get());
  return collections;
}

size_t session::size() const {
  size_t sum = size_of(own());
  for (const unique_collection& each : stored_) sum += size_of(each.get());
  return sum;
}

bool session::holds(const std::string& ident) const {
  return std::ranges::any_of(all(),
                             [&](playlist_collection* each) { return holds_ident(each, ident); });
}

unique_zdo session::media(const std::string& ident, playlist_collection** holder) const {
  zvsdk_status status = playlist_warn_not_found;
  zvsdk_zdo* object = nullptr;
  for (playlist_collection* each : all()) {
    status = zvsdk_playlist_collection_get_zdo(each, user_.get(), ident.c_str(), &object);
    if (holder != nullptr) *holder = each;
    if (status != playlist_warn_not_found) break;
  }
  if (status == playlist_warn_not_found) throw failure(exit_no_match, hidden_text(ident));
  check(status, "reading a track");
  return unique_zdo(object);
}

// The library leaves a seed out only if the collection that it generates from holds it itself.
playlist_collection* session::whole(const std::string& first) {
  if (stored_.empty()) return own();
  if (whole_ != nullptr) return whole_;
  std::vector<playlist_collection*> collections = all();
  if (!first.empty()) media(first, &whole_);
  for (playlist_collection* each : collections)
    if (whole_ == nullptr && size_of(each) != 0) whole_ = each;
  if (whole_ == nullptr) whole_ = own();
  for (playlist_collection* each : collections)
    if (each != whole_ && size_of(each) != 0)
      check(zvsdk_playlist_collection_join(whole_, each), "joining collections");
  return whole_;
}

playlist_collection* session::target(const std::string& seed) {
  playlist_collection* const collection = whole(seed);
  for (const auto& [option, number] : options_)
    check(
        zvsdk_playlist_morelikethis_option_set(collection, option, std::to_string(number).c_str()),
        "setting an option");
  return collection;
}

std::vector<ranked_ident> session::generate(const std::string& statement, const std::string& seed) {
  playlist_collection* const collection = target(seed);
  unique_zdo seed_object;
  if (!seed.empty()) seed_object = media(seed);
  playlist_results* results = nullptr;
  check(zvsdk_playlist_generate_playlist(user_.get(), statement.c_str(), collection,
                                         seed_object.get(), &results),
        "the statement");
  return read_results(results);
}

std::vector<ranked_ident> session::more_like(const std::string& seed) {
  playlist_collection* const collection = target(seed);
  playlist_results* results = nullptr;
  check(zvsdk_playlist_generate_morelikethis(user_.get(), collection, media(seed).get(), &results),
        "More-Like-This");
  return read_results(results);
}

// What a value means shows in a run alone. A seed that tells nothing suits every statement.
bool session::validate(const std::string& statement) {
  uint8_t uses_seed = 0;
  check(zvsdk_playlist_statement_validate(statement.c_str(), own(), &uses_seed), "the statement");
  zvsdk_zdo* seed = nullptr;
  check(zvsdk_manager_zdo_create("zvsdk_ctx_track", &seed), "making a seed");
  const unique_zdo blank(seed);
  playlist_results* results = nullptr;
  check(zvsdk_playlist_generate_playlist(user_.get(), statement.c_str(), own(), seed, &results),
        "the statement");
  const unique_results nothing(results);
  return uses_seed != 0;
}

std::string session::analyze(const std::string& statement, const std::string& ident) {
  const char* text = nullptr;
  const zvsdk_status status =
      zvsdk_playlist_statement_analyze_ident(statement.c_str(), whole(), ident.c_str(), &text);
  if (status == playlist_warn_not_found) return "";
  check(status, "the statement");
  return unique_text(text).get();
}

std::vector<std::string> session::attributes() const {
  std::vector<std::string> names;
  const char* name = nullptr;
  for (uint32_t i = 0; zvsdk_playlist_attributes_enum(i, &name) == 0; ++i)
    if (!is_detail(name)) names.push_back(name);
  return names;
}

std::vector<attribute_values> session::values_of(const std::string& ident) const {
  auto values = read_media(manager_.get(), media(ident).get());
  std::erase_if(values, [](const attribute_values& each) { return is_detail(each.attribute); });
  return values;
}

track session::track_of(const std::string& ident) const {
  return track_of_media(ident, read_media(manager_.get(), media(ident).get()));
}

}  // namespace zvplaylist
