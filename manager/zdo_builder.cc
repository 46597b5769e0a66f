// The builder of data objects.

#include "manager/zdo_builder.h"

namespace manager {

zdo_builder::zdo_builder(zdo_pool& pool, uint32_t nodes, size_t bytes)
    : pool_(pool), cluster_(pool.take(nodes)) {
  try {
    if (bytes != 0) cluster_->reserve(bytes);
  } catch (...) {
    pool_.discard(cluster_);
    throw;
  }
}

zdo_builder::~zdo_builder() {
  if (cluster_ != nullptr) pool_.discard(cluster_);
}

zdo_node* zdo_builder::add_root(const char* context, uint32_t keys) {
  zdo_node* node = zdo_pool::next_node(*cluster_, context);
  node->reserve(keys);
  return node;
}

zdo_node* zdo_builder::add_child(zdo_node* parent, const char* key, const char* context,
                                 uint32_t keys) {
  if (zdo_node* node = zdo_pool::next_node(*cluster_, context)) {
    node->reserve(keys);
    parent->add_child(key, node);
    return node;
  }
  // The cluster is full: the child gets one of its own.
  zdo_builder other(pool_, 1, 0);
  zdo_node* node = other.add_root(context, keys);
  parent->add_child(key, node);
  other.cluster_ = nullptr;
  return node;
}

void zdo_builder::add_value(zdo_node* node, const char* key, const char* text) {
  if (text != nullptr && *text != '\0') node->add_value(key, node->cluster().copy(text));
}

zdo_node* zdo_builder::finish() noexcept {
  zdo_node* root = cluster_->nodes();
  zdo_pool::hold(root);
  cluster_ = nullptr;
  return root;
}

}  // namespace manager
