// Reads media objects attribute by attribute.
#include "tools/media_values.h"

#include <algorithm>
#include <string_view>

#include "tools/library.h"

namespace zvplaylist {
namespace {

// The key under which a media object has an attribute's id or number.
struct id_key {
  std::string_view attribute;
  const char* key;
};
constexpr id_key id_keys[] = {{"ZV_Genre", "_sdkmgr_val_list_genre_id"},
                              {"ZV_Mood", "_sdkmgr_val_list_mood_id"},
                              {"ZV_Era", "_sdkmgr_val_list_era_id"},
                              {"ZV_Origin", "_sdkmgr_val_list_origin_id"},
                              {"ZV_ArtistType", "_sdkmgr_val_list_artist_type_id"},
                              {"ZV_Tempo", "_sdkmgr_val_list_tempo_value"}};
constexpr id_key profile_key = {"ZV_Mood", "_sdkmgr_val_list_mood_data"};

// Reads values out of media objects.
class media_reader {
 public:
  media_reader(zvsdk_sdkmanager* manager, zvsdk_zdo* object) : object_(object) {
    void* table = nullptr;
    check(manager->interface_get(ZVSDK_ZDO_INTERFACE, nullptr, nullptr, &table),
          "asking for data objects");
    table_ = static_cast<const zvsdk_zdo_interface*>(table);
  }

  // An ordinal without a text of its own gives that of a later one.
  std::string value(const char* key, uint32_t ordinal = 1) const {
    const char* text = nullptr;
    const zvsdk_status status = table_->zdo_value_get(object_, key, ordinal, &text);
    return status == 0 ? text : "";
  }
  std::vector<std::string> texts(const char* attribute) const {
    uint32_t count = 0;
    check(zvsdk_manager_zdo_value_count(object_, attribute, &count), "counting values");
    std::vector<std::string> texts;
    for (uint32_t i = 1; i <= count; ++i) {
      const std::string text = value(attribute, i);
      if (!text.empty() && std::find(texts.begin(), texts.end(), text) == texts.end())
        texts.push_back(text);
    }
    return texts;
  }
  attribute_values read(const char* attribute) const {
    attribute_values values{attribute, texts(attribute), {}, {}};
    for (const id_key& each : id_keys)
      if (each.attribute == attribute) values.id = value(each.key);
    if (profile_key.attribute == attribute) values.profile = value(profile_key.key);
    return values;
  }

 private:
  zvsdk_zdo* object_;
  const zvsdk_zdo_interface* table_;
};

}  // namespace

std::vector<attribute_values> read_media(zvsdk_sdkmanager* manager, zvsdk_zdo* media) {
  const media_reader reader(manager, media);
  std::vector<attribute_values> values;
  const char *attribute = nullptr, *first = nullptr;
  for (uint32_t i = 0; zvsdk_manager_zdo_render(media, i, &attribute, &first) == 0; ++i)
    values.push_back(reader.read(attribute));
  zvsdk_manager_errorinfo_clear();  // of the end of the entries
  return values;
}

}  // namespace zvplaylist
