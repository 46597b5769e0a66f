/*
 * locales.h: the default locale of each group. A locale is three texts; replacing a group's locale
 * leaves the old one to whoever still holds a reference.
 */
#ifndef LOCALES_H
#define LOCALES_H

#include <map>
#include <string>

#include "manager/handle_space.h"
#include "manager/manager_status.h"

namespace manager {

struct locale_slot : handle_slot {
  static constexpr handle_kind kind = handle_kind::locale;

  std::string language;
  std::string region;
  std::string descriptor;
};

class locales {
 public:
  explicit locales(handle_space& space) : pool_(space) {}

  void load(const char* group, std::string language, const char* region, const char* descriptor);
  zvsdk_status unload(const char* group);
  /* The group's locale with a new reference, or null. */
  locale_slot* get_default(const char* group);
  zvsdk_status release(locale_slot* locale) noexcept { return pool_.release(locale); }

 private:
  slot_pool<locale_slot> pool_;
  std::mutex mutex_;
  std::map<std::string, locale_slot*, std::less<>> defaults_;  // guarded by mutex_
};

}  // namespace manager

#endif
