/*
 * playlist_render_parsetree.h: a parse tree, evaluated or not, as text for people: one line for
 * each node, indented by its depth. docs/pdl.md reads one.
 */
#ifndef PLAYLIST_RENDER_PARSETREE_H
#define PLAYLIST_RENDER_PARSETREE_H

#include "pdl/playlist_pdl_node.h"
#include "support/zcsl_accum.h"

/*
 * Appends a tree whose top stands at `depth`. BEGINS, CONTAINS, IN and the list of an IN have an
 * indent and no line, so that the next line stands behind their indent.
 *
 * The indent grows for 256 levels, which is more than parentheses can nest. A longer chain goes on
 * straight down: its text would otherwise grow with the square of its length.
 */
zvsdk_status _playlist_render_parsetree(zcsl_accum* accumulator, uint32_t depth,
                                        playlist_pdl_node* node);

#endif
