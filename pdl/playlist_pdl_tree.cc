// Parse-tree nodes: making, linking and freeing them, and what a comparison asks of an attribute.
#include <algorithm>
#include <utility>

#include "pdl/playlist_pdl_node.h"
#include "support/zcsl_string.h"
#include "zvsdk_runtime.h"

namespace {

// What a node owns besides its children, then the node.
void free_node(playlist_pdl_node* node) {
  playlist_pdl_values_leave(&node->values);
  if (node->attribute != nullptr && node->instance != nullptr &&
      node->attribute->release_instance != nullptr)
    node->attribute->release_instance(node->instance);
  zcsl_hashmap_delete(node->list);
  zcsl_string_free(node->error_text);
  zcsl_string_free(node->text);
  zcsl_memory_free(node);
}

zvsdk_status pop_node(zcsl_stack* stack, playlist_pdl_node_owner* node) {
  void* popped = nullptr;
  const zvsdk_status status = zcsl_stack_pop(stack, &popped);
  node->reset(static_cast<playlist_pdl_node*>(popped));
  return status == 0 ? 0 : playlist_error_internal;
}

// A node whose operands were swallowed by an odd parenthesis can be linked anew: what it had goes.
void adopt(playlist_pdl_node* parent, playlist_pdl_node* playlist_pdl_node::*place,
           playlist_pdl_node_owner child) {
  child->parent = parent;
  playlist_pdl_node_delete(std::exchange(parent->*place, child.release()));
}

}  // namespace

void playlist_pdl_node_delete(playlist_pdl_node* node) {
  playlist_pdl_node* const top = node;
  while (node != nullptr) {
    if (node->left != nullptr) {
      node = std::exchange(node->left, nullptr);
    } else if (node->right != nullptr) {
      node = std::exchange(node->right, nullptr);
    } else {
      playlist_pdl_node* const parent = node == top ? nullptr : node->parent;
      free_node(node);
      node = parent;
    }
  }
}

void playlist_pdl_node_free(void* node) {
  playlist_pdl_node_delete(static_cast<playlist_pdl_node*>(node));
}

zvsdk_status playlist_pdl_node_create(int32_t kind, playlist_pdl_text text,
                                      playlist_pdl_node** node) {
  playlist_pdl_node_owner made(
      static_cast<playlist_pdl_node*>(zcsl_memory_calloc(1, sizeof(playlist_pdl_node))));
  if (!made) return playlist_error_no_memory;
  made->kind = kind;
  made->score = playlist_score_ignored;
  if (text.start != nullptr) {
    const uint32_t length = std::min(text.length, playlist_pdl_max_text);
    made->text = zcsl_string_strdupn(text.start, length + 1, 0);
    if (made->text == nullptr) return playlist_error_no_memory;
  }
  *node = made.release();
  return 0;
}

zvsdk_status playlist_pdl_push(zcsl_stack* stack, playlist_pdl_node_owner node) {
  const zvsdk_status status = zcsl_stack_push(stack, node.get());
  if (status != 0) return playlist_error_no_memory;
  (void)node.release();
  return 0;
}

zvsdk_status _playlist_pdl_push_node(zcsl_stack* stack, int32_t kind, playlist_pdl_text text) {
  playlist_pdl_node_owner node;
  const zvsdk_status status = playlist_pdl_node_create(kind, text, node.out());
  return status != 0 ? status : playlist_pdl_push(stack, std::move(node));
}

zvsdk_status playlist_pdl_push_list(zcsl_stack* stack, zcsl_hashmap_owner list) {
  playlist_pdl_node_owner node;
  const zvsdk_status status = playlist_pdl_node_create(playlist_pdl_list, {}, node.out());
  if (status != 0) return status;
  node->list = list.release();
  return playlist_pdl_push(stack, std::move(node));
}

zvsdk_status _playlist_pdl_make_tree(zcsl_stack* stack, playlist_pdl_form form) {
  playlist_pdl_node_owner popped[3];
  for (playlist_pdl_node_owner& node : popped) {
    if (const zvsdk_status status = pop_node(stack, &node)) return status;
  }
  // Where parent, left and right were popped in each form.
  constexpr uint8_t places[3][3] = {{0, 2, 1}, {1, 2, 0}, {2, 1, 0}};
  const uint8_t* place = places[static_cast<int>(form)];
  playlist_pdl_node_owner& parent = popped[place[0]];
  adopt(parent.get(), &playlist_pdl_node::left, std::move(popped[place[1]]));
  adopt(parent.get(), &playlist_pdl_node::right, std::move(popped[place[2]]));
  return playlist_pdl_push(stack, std::move(parent));
}

zvsdk_status _playlist_pdl_map_symbol_to_attr_op(int32_t symbol, bool attribute_on_right,
                                                 uint32_t* op) {
  struct mapping {
    uint32_t attribute_left, attribute_right;
  };
  static constexpr mapping s_by_symbol[] = {
      {playlist_op_equal, playlist_op_equal},               // EQ
      {playlist_op_not_equal, playlist_op_not_equal},       // NE
      {playlist_op_less, playlist_op_greater},              // LT
      {playlist_op_less_equal, playlist_op_greater_equal},  // LE
      {playlist_op_greater, playlist_op_less},              // GT
      {playlist_op_greater_equal, playlist_op_less_equal},  // GE
      {playlist_op_like, playlist_op_like},                 // LIKE
      {playlist_op_begins, playlist_op_begins},             // BEGINS
      {playlist_op_contains, playlist_op_contains},         // CONTAINS
  };
  if (!playlist_pdl_is_attribute_operator(symbol)) return playlist_error_internal;
  const mapping& row = s_by_symbol[symbol - playlist_pdl_eq];
  *op = attribute_on_right ? row.attribute_right : row.attribute_left;
  return 0;
}

int32_t playlist_pdl_number_of(playlist_pdl_node* node) {
  if (!node->number_known) {
    node->number = zcsl_string_atoi32(node->text);
    node->number_known = 1;
  }
  return node->number;
}
