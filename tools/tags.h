// tags.h: the tags of one audio file.
#ifndef ZVPLAYLIST_TAGS_H
#define ZVPLAYLIST_TAGS_H

#include <optional>
#include <string>
#include <string_view>

#include "tools/record.h"

namespace zvplaylist {

struct audio_tags {
  record values;
  uint32_t seconds = 0;
};

// By the extension, in any letter case.
bool is_audio_path(std::string_view path);

// Nothing when no decoder knows the file. Costs a few reads; the sound itself is not decoded.
std::optional<audio_tags> read_tags(const std::string& path);

}  // namespace zvplaylist

#endif
