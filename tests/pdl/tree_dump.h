/*
 * tree_dump.h: a parse tree as compact text: kind or text, then the children in parentheses. An
 * absent WHERE is "*", a placeholder "_", an IN list "[n]" with its size.
 */
#ifndef TREE_DUMP_H
#define TREE_DUMP_H

#include "pdl/playlist_pdl_node.h"
#include "tests/common/host_objects.h"

inline std::string tree_label(const playlist_pdl_node* node) {
  static constexpr std::pair<int32_t, const char*> fixed[] = {{playlist_pdl_none, "_"},
                                                              {playlist_pdl_whereall, "*"},
                                                              {playlist_pdl_and, "AND"},
                                                              {playlist_pdl_or, "OR"},
                                                              {playlist_pdl_results, "RESULTS"}};
  for (const auto& [kind, label] : fixed)
    if (node->kind == kind) return label;
  if (node->kind == playlist_pdl_literal) return "\"" + std::string(node->text) + "\"";
  if (node->kind == playlist_pdl_list)
    return "[" + std::to_string(output_of(zcsl_hashmap_count, node->list)) + "]";
  return node->text != nullptr ? node->text : _playlist_pdl_map_symbol_to_string(node->kind);
}

inline std::string dump_tree(const playlist_pdl_node* node) {
  std::string text = tree_label(node);
  if (node->left == nullptr) return text;
  return text + "(" + dump_tree(node->left) + " " + dump_tree(node->right) + ")";
}

#endif
