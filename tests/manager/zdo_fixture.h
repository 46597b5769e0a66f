/*
 * zdo_fixture.h: reading data objects in one line, in a host of the fixture's or of a test's own.
 */
#ifndef ZDO_FIXTURE_H
#define ZDO_FIXTURE_H

#include "tests/manager/host_fixture.h"

struct object_reader {
  const zvsdk_zdo_interface* objects;

  zdo_ptr child(const zdo_ptr& of, const std::string& key, uint32_t ordinal = 1) {
    zvsdk_zdo* found = nullptr;
    const zvsdk_status status =
        objects->zdo_child_get(of.get(), key.c_str(), ordinal, nullptr, &found);
    EXPECT_EQ(found != nullptr ? 0u : 3u, low_word(status)) << key;
    return zdo_ptr(found);
  }
  /* The value at the end of a path "child/child/value". */
  std::string value(const zdo_ptr& of, const std::string& path, uint32_t ordinal = 1) {
    const size_t slash = path.find('/');
    if (slash != std::string::npos) {
      const zdo_ptr next = child(of, path.substr(0, slash));
      return next ? value(next, path.substr(slash + 1), ordinal) : "(none)";
    }
    const char* text = nullptr;
    const zvsdk_status status = objects->zdo_value_get(of.get(), path.c_str(), ordinal, &text);
    EXPECT_EQ(text != nullptr ? 0u : 3u, low_word(status)) << path;
    return text != nullptr ? text : "(none)";
  }
  std::string context(const zdo_ptr& of) { return output_of(objects->zdo_get_type, of.get()); }
};

class zdo_test : public host_test, protected object_reader {
 protected:
  zdo_test() : object_reader{host.objects} {}
};

#endif
