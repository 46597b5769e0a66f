/*
 * users.h: users, who are a name and a handle. A user is shared by whoever took a reference.
 */
#ifndef USERS_H
#define USERS_H

#include <string>

#include "manager/handle_space.h"
#include "manager/manager_status.h"

namespace manager {

struct user_slot : handle_slot {
  static constexpr handle_kind kind = handle_kind::user;

  std::string name;
};

class users {
 public:
  explicit users(handle_space& space) : pool_(space) {}

  user_slot* add(const char* name) {
    std::string own_name = name != nullptr ? name : "";
    user_slot* user = pool_.take();
    user->name = std::move(own_name);
    user->revive();
    return user;
  }

  zvsdk_status release(user_slot* user) noexcept { return pool_.release(user); }

  size_t count() { return pool_.taken(); }

 private:
  slot_pool<user_slot> pool_;
};

}  // namespace manager

#endif
