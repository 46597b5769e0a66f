// The tool's own attributes. Each is an instance of one template; what differs is data.
#include "tools/details.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <new>

#include "tools/library.h"
#include "tools/text.h"

// What the library keeps for one use of an attribute: room for the number that it reads.
struct playlist_attribute_instance {
  std::array<char, 16> text;
};

namespace zvplaylist {
namespace {

enum class detail { location, seconds, stamp_high, stamp_low };
struct detail_kind {
  const char* attribute;
  bool is_text;
};
// In the order of detail. Numbers have 31 bits, so that a stamp takes two.
constexpr detail_kind kinds[] = {{"zvplaylist_location", true},
                                 {"zvplaylist_seconds", false},
                                 {"zvplaylist_stamp_high", false},
                                 {"zvplaylist_stamp_low", false}};
constexpr uint32_t half_stamp_bits = 31;
constexpr uint64_t half_stamp_mask = (uint64_t{1} << half_stamp_bits) - 1;

const zvsdk_zdo_interface* zdo_table = nullptr;

constexpr const detail_kind& kind_of(detail which) {
  return kinds[static_cast<size_t>(which)];
}

uint64_t number_of(std::string_view text) {
  uint64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

zvsdk_status collect(const detail_kind& kind, playlist_collect_context* context,
                     const playlist_collect_api* api) {
  zvsdk_zdo* object = nullptr;
  if (api->get_media_zdo(context, &object) != 0) return 0;
  const unique_zdo held(object);
  const char* text = nullptr;
  if (zdo_table->zdo_value_get(object, kind.attribute, 1, &text) != 0) return 0;
  return kind.is_text ? api->set_string_data(context, text)
                      : api->set_integer_data(context, static_cast<int32_t>(number_of(text)));
}

zvsdk_status no_operators(uint32_t, uint32_t*) {
  return playlist_warn_not_found;
}

zvsdk_status create_instance(playlist_attribute_instance** instance) {
  *instance = new (std::nothrow) playlist_attribute_instance{};
  return *instance != nullptr ? 0 : playlist_error_no_memory;
}

zvsdk_status release_instance(playlist_attribute_instance* instance) {
  delete instance;
  return 0;
}

zvsdk_status text_of_number(playlist_attribute_instance* instance, uint32_t value, const char*,
                            zvsdk_locale*, const char** text) {
  std::snprintf(instance->text.data(), instance->text.size(), "%u", static_cast<unsigned>(value));
  *text = instance->text.data();
  return 0;
}

zvsdk_status text_of_text(playlist_attribute_instance*, const char* stored, const char*,
                          zvsdk_locale*, const char** text) {
  *text = stored;
  return 0;
}

template <detail which>
void register_detail() {
  playlist_attribute attribute = {
      .initialize = nullptr,
      .shutdown = nullptr,
      .attribute_name = [](const char** name) -> zvsdk_status {
        *name = kind_of(which).attribute;
        return 0;
      },
      .supported_operators = no_operators,
      .collect_attribute_data = [](playlist_collect_context* context,
                                   const playlist_collect_api* api) -> zvsdk_status {
        return collect(kind_of(which), context, api);
      },
      .create_instance = create_instance,
      .set_string_criteria = nullptr,
      .set_seed_criteria = nullptr,
      .compare_integer_data = nullptr,
      .compare_string_data = nullptr,
      .value_from_integer_data = text_of_number,
      .value_from_string_data = text_of_text,
      .release_instance = release_instance,
  };
  check(zvsdk_playlist_register_attribute_provider(&attribute), "registering an attribute");
}

// A path may be bytes that the library takes for no text: '%' and, if need be, all that is not
// ASCII stand as "%XX".
std::string escaped(const std::string& location) {
  const bool usable = replace_unusable(location).text == location;
  std::string text;
  for (const unsigned char c : location) {
    if (c == '%' || (!usable && c >= 0x80)) {
      char code[4];
      std::snprintf(code, sizeof code, "%%%02X", c);
      text += code;
    } else {
      text += static_cast<char>(c);
    }
  }
  return text;
}

std::string unescaped(std::string_view text) {
  std::string location;
  for (size_t i = 0; i < text.size(); ++i) {
    unsigned value = 0;
    const char* digits = text.data() + i + 1;
    if (text[i] == '%' && i + 2 < text.size() &&
        std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
      location += static_cast<char>(value);
      i += 2;
    } else {
      location += text[i];
    }
  }
  return location;
}

void add_detail(zvsdk_zdo* object, detail which, const std::string& text) {
  check(zvsdk_manager_zdo_value_add(object, kind_of(which).attribute, text.c_str()),
        "describing a track");
}

}  // namespace

void register_details(zvsdk_sdkmanager* manager) {
  void* table = nullptr;
  check(manager->interface_get(ZVSDK_ZDO_INTERFACE, nullptr, nullptr, &table),
        "asking for data objects");
  zdo_table = static_cast<const zvsdk_zdo_interface*>(table);
  register_detail<detail::location>();
  register_detail<detail::seconds>();
  register_detail<detail::stamp_high>();
  register_detail<detail::stamp_low>();
}

void add_details(zvsdk_zdo* object, const track& entry) {
  if (entry.location != entry.ident) add_detail(object, detail::location, escaped(entry.location));
  if (entry.seconds != 0) add_detail(object, detail::seconds, std::to_string(entry.seconds));
  if (entry.stamp == 0) return;
  add_detail(object, detail::stamp_high, std::to_string(entry.stamp >> half_stamp_bits));
  add_detail(object, detail::stamp_low, std::to_string(entry.stamp & half_stamp_mask));
}

bool is_detail(std::string_view attribute) {
  for (const detail_kind& kind : kinds)
    if (kind.attribute == attribute) return true;
  return false;
}

void take_detail(track& entry, std::string_view attribute, const std::string& text) {
  if (attribute == kind_of(detail::location).attribute)
    entry.location = unescaped(text);
  else if (attribute == kind_of(detail::seconds).attribute)
    entry.seconds = static_cast<uint32_t>(number_of(text));
}

uint64_t stamp_of(zvsdk_zdo* media) {
  uint64_t stamp = 0;
  for (const detail half : {detail::stamp_high, detail::stamp_low}) {
    const char* text = nullptr;
    if (zdo_table->zdo_value_get(media, kind_of(half).attribute, 1, &text) != 0) return 0;
    stamp = stamp << half_stamp_bits | number_of(text);
  }
  return stamp;
}

}  // namespace zvplaylist
