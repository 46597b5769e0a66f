/*
 * zcsl_links.h: doubly linked lists whose nodes carry the links, two of their fields, and whose
 * owner keeps the two ends. Both operations are constant time and allocate nothing; whoever guards
 * the owner guards its list. Internal.
 *
 *   using ages = zcsl_links<&lru_node::next, &lru_node::previous>;
 *   ages::append(map->oldest, map->newest, node);
 */
#ifndef ZCSL_LINKS_H
#define ZCSL_LINKS_H

template <auto Next, auto Previous>
struct zcsl_links {
  /* Puts a node that is in no list behind the last one. */
  template <class Node>
  static void append(Node*& first, Node*& last, Node* node) {
    node->*Next = nullptr;
    node->*Previous = last;
    (last ? last->*Next : first) = node;
    last = node;
  }

  template <class Node>
  static void remove(Node*& first, Node*& last, Node* node) {
    (node->*Previous ? (node->*Previous)->*Next : first) = node->*Next;
    (node->*Next ? (node->*Next)->*Previous : last) = node->*Previous;
    node->*Next = node->*Previous = nullptr;
  }
};

#endif
