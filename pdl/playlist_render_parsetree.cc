// A parse tree as text.
#include "pdl/playlist_render_parsetree.h"

#include <algorithm>
#include <array>

#include "pdl/playlist_pdl_walk.h"
#include "support/zcsl_log.h"
#include "support/zcsl_owners.h"

namespace {

constexpr uint32_t s_indent = 2;
constexpr uint32_t s_deepest_indent = 256;

constexpr auto s_indents = [] {
  std::array<char, size_t{s_indent} * s_deepest_indent> spaces;
  spaces.fill(' ');
  return spaces;
}();

zvsdk_status add_indent(zcsl_accum* text, uint32_t depth) {
  return zcsl_string_accum_append_bytes(text, s_indents.data(),
                                        s_indent * std::min(depth, s_deepest_indent), nullptr);
}

// A line is made on the stack, where it has room: printing into the text would leave out what there
// is no memory for without a word.
template <class... Args>
zvsdk_status add_line(zcsl_accum* text, const char* format, Args... args) {
  alignas(void*) char storage[playlist_pdl_max_text + 101];
  zcsl_accum_owner line;
  zvsdk_status status = zcsl_string_accum_create(line.out(), storage, sizeof storage);
  if (status == 0) status = zcsl_string_accum_append_format(line.get(), format, args...);
  const char* made = nullptr;
  if (status == 0) status = zcsl_string_accum_get_string(line.get(), &made, nullptr);
  return status == 0 ? zcsl_string_accum_append(text, made, nullptr) : status;
}

// A child that is missing counts as one that was never evaluated.
int32_t score_of(const playlist_pdl_node* child) {
  return child != nullptr ? child->score : playlist_score_ignored;
}

const char* truth_of(int32_t score) {
  return score == 1000 ? "TRUE" : "FALSE";
}
const char* outcome_of(const playlist_pdl_node* node) {
  return node->score == playlist_score_ignored ? "IGNORED" : truth_of(node->score);
}

zvsdk_status add_operator(zcsl_accum* text, const playlist_pdl_node* node, const char* name) {
  if (node->score == playlist_score_ignored)
    return add_line(text, "operator: %s [IGNORED]\n", name);
  return add_line(text, "operator: %d %s %d [%d]\n", score_of(node->left), name,
                  score_of(node->right), node->score);
}

zvsdk_status add_node(zcsl_accum* text, const playlist_pdl_node* node) {
  const char* name = _playlist_pdl_map_symbol_to_string(node->kind);
  switch (node->kind) {
    case playlist_pdl_whereall:
    case playlist_pdl_where:
      return add_line(text, "%s [%s]\n", name, truth_of(score_of(node->right)));
    case playlist_pdl_and:
      return add_line(text, "AND [%s]\n", outcome_of(node));
    case playlist_pdl_or:
      return add_line(text, "OR [%s]\n", outcome_of(node));
    case playlist_pdl_times:
    case playlist_pdl_divide:
    case playlist_pdl_plus:
    case playlist_pdl_minus:
    case playlist_pdl_rand:
      return add_line(text, "%s [%d]\n", name, node->score);
    case playlist_pdl_literal:
      return add_line(text, "%s: \"%s\"\n", name, node->text);
    case playlist_pdl_number:
      return add_line(text, node->is_defthresh ? "defthresh: %s\n" : "number: %s\n", node->text);
    case playlist_pdl_eq:
    case playlist_pdl_ne:
    case playlist_pdl_lt:
    case playlist_pdl_le:
    case playlist_pdl_gt:
    case playlist_pdl_ge:
    case playlist_pdl_like:
      return add_operator(text, node, name);
    case playlist_pdl_generate:
    case playlist_pdl_playlist:
    case playlist_pdl_genpl:
    case playlist_pdl_order:
    case playlist_pdl_ident:
    case playlist_pdl_seed:
    case playlist_pdl_dquote:
    case playlist_pdl_squote:
    case playlist_pdl_comma:
    case playlist_pdl_lparen:
    case playlist_pdl_rparen:
    case playlist_pdl_limit:
    case playlist_pdl_per:
    case playlist_pdl_results:
    case playlist_pdl_end:
      return add_line(text, "%s\n", name);
    default:
      return 0;
  }
}

}  // namespace

zvsdk_status _playlist_render_parsetree(zcsl_accum* accumulator, uint32_t depth,
                                        playlist_pdl_node* node) {
  const zvsdk_status status = playlist_pdl_walk(
      node, [](const playlist_pdl_node* child) { return child->kind != playlist_pdl_none; },
      [=](const playlist_pdl_node* visited, uint32_t below) {
        const zvsdk_status indented = add_indent(accumulator, depth + below);
        return indented != 0 ? indented : add_node(accumulator, visited);
      });
  return zcsl_logged(status, __LINE__, "playlist_render_parsetree");
}
