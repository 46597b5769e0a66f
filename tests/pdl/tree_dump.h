/*
 * tree_dump.h: a parse tree as compact text: kind or text, then the children in parentheses. An
 * absent WHERE is "*", a placeholder "_", an IN list "[n]" with its size.
 */
#ifndef TREE_DUMP_H
#define TREE_DUMP_H

#include <string>

#include "pdl/playlist_pdl_node.h"

inline std::string tree_label(const playlist_pdl_node* node) {
  uint32_t count = 0;
  switch (node->kind) {
    case playlist_pdl_none:
      return "_";
    case playlist_pdl_whereall:
      return "*";
    case playlist_pdl_and:
      return "AND";
    case playlist_pdl_or:
      return "OR";
    case playlist_pdl_results:
      return "RESULTS";
    case playlist_pdl_literal:
      return "\"" + std::string(node->text) + "\"";
    case playlist_pdl_list:
      zcsl_hashmap_count(node->list, &count);
      return "[" + std::to_string(count) + "]";
    default:
      break;
  }
  return node->text != nullptr ? node->text : _playlist_pdl_map_symbol_to_string(node->kind);
}

inline std::string dump_tree(const playlist_pdl_node* node) {
  std::string text = tree_label(node);
  if (node->left == nullptr) return text;
  return text + "(" + dump_tree(node->left) + " " + dump_tree(node->right) + ")";
}

#endif
