// Records.

#include "manager/storage/record.h"

#include <algorithm>

#include "manager/storage/storage_status.h"
#include "manager/storage/table.h"

namespace manager::storage {
namespace {

template <class Values>
auto* find_in(Values& values, std::string_view column) {
  const auto found = std::find_if(values.begin(), values.end(), [&](const value& each) {
    return same_name(each.column, column);
  });
  return found != values.end() ? &*found : nullptr;
}

}  // namespace

const value* record::find(std::string_view column) const {
  return find_in(values, column);
}

void record::set(std::string_view column, value_kind kind, std::string bytes) {
  if (value* present = find_in(values, column)) {
    present->kind = kind;
    present->bytes = std::move(bytes);
    return;
  }
  require(values.size() < ZVSDK_STORAGE_COLUMNS, "a record has at most 32 columns");
  values.push_back({std::string(column), kind, std::move(bytes)});
}

const std::string* record::get(std::string_view column, value_kind wanted) {
  value* found = find_in(values, column);
  if (found == nullptr || found->kind == value_kind::every) return nullptr;
  if (found->kind == value_kind::unread && wanted == value_kind::binary && !read(*found)) {
    return nullptr;
  }
  require(found->kind == wanted, "the column \"" + found->column + "\" is of the other type");
  return &found->bytes;
}

bool record::asks_for_every() const {
  return std::any_of(values.begin(), values.end(),
                     [](const value& each) { return each.kind == value_kind::every; });
}

bool record::read_all() {
  return std::all_of(values.begin(), values.end(),
                     [&](value& each) { return each.kind != value_kind::unread || read(each); });
}

bool record::read(value& unread) {
  if (!origin->read_binary(row, unread.column, unread.bytes)) return false;
  unread.kind = value_kind::binary;
  return true;
}

}  // namespace manager::storage
