// Default locales by group.

#include "manager/locales.h"

#include <utility>

namespace manager {
namespace {

std::string text_or_empty(const char* text) {
  return text != nullptr ? text : "";
}

}  // namespace

void locales::load(const char* group, std::string language, const char* region,
                   const char* descriptor) {
  std::string own_region = text_or_empty(region);
  std::string own_descriptor = text_or_empty(descriptor);
  locale_slot* old = nullptr;
  {
    std::lock_guard lock(mutex_);
    locale_slot*& current = defaults_[group];
    locale_slot* made = pool_.take();
    made->language = std::move(language);
    made->region = std::move(own_region);
    made->descriptor = std::move(own_descriptor);
    made->revive();
    old = std::exchange(current, made);
  }
  if (old != nullptr) release(old);
}

zvsdk_status locales::unload(const char* group) {
  locale_slot* old = nullptr;
  {
    std::lock_guard lock(mutex_);
    const auto found = defaults_.find(group);
    if (found == defaults_.end() || found->second == nullptr) return warn_not_found;
    old = found->second;
    defaults_.erase(found);
  }
  return release(old);
}

locale_slot* locales::get_default(const char* group) {
  std::lock_guard lock(mutex_);
  const auto found = defaults_.find(group);
  if (found == defaults_.end() || found->second == nullptr) return nullptr;
  return found->second->addref() ? found->second : nullptr;
}

}  // namespace manager
