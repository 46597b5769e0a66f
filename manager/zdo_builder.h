/*
 * zdo_builder.h: makes data objects. A builder owns what it has made until it is finished, so that
 * a failure on the way leaves nothing behind.
 */
#ifndef ZDO_BUILDER_H
#define ZDO_BUILDER_H

#include "manager/host.h"

namespace manager {

inline zvsdk_zdo* as_handle(zdo_node* node) {
  return reinterpret_cast<zvsdk_zdo*>(node);
}

class zdo_builder {
 public:
  /* Room for this many nodes and bytes of texts and keys; both grow when they must. */
  zdo_builder(zdo_pool& pool, uint32_t nodes, size_t bytes);
  ~zdo_builder();
  zdo_builder(const zdo_builder&) = delete;
  zdo_builder& operator=(const zdo_builder&) = delete;

  /* The first node is the object itself. `context` and `key` must be constants. */
  zdo_node* add_root(const char* context, uint32_t keys);
  zdo_node* add_child(zdo_node* parent, const char* key, const char* context, uint32_t keys);
  /* Copies the text. A null or empty one is left out. */
  void add_value(zdo_node* node, const char* key, const char* text);

  zdo_cluster& cluster() { return *cluster_; }
  /* Hands out the object with one reference. */
  zdo_node* finish() noexcept;

 private:
  zdo_pool& pool_;
  zdo_cluster* cluster_;
};

/* One object per JSON object. Throws status_error with the path of what is wrong. */
zdo_node* zdo_from_json(zdo_pool& pool, const char* json);
/* The full tree of a track. Names that no list knows are refused or, where a mask is given, noted.
 */
zdo_node* zdo_from_track(host& h, const zvsdk_track_description& track, uint32_t* unknown);

}  // namespace manager

#endif
