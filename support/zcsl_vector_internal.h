/*
 * zcsl_vector_internal.h: what the pointer vector and the record vector do alike: counting,
 * walking, and looking after the sorted state. Internal to the two.
 *
 * A vector has the fields `count`, `flags` and `compare` and the members sorted(), at(index) and
 * order(a, b). All but the count and the walk are called under the lock.
 */
#ifndef ZCSL_VECTOR_INTERNAL_H
#define ZCSL_VECTOR_INTERNAL_H

#include "support/zcsl_container.h"
#include "support/zcsl_vector.h"

template <class Vector>
void zcsl_vector_end_sorted(Vector* vector) {
  vector->flags &= ~uint32_t{zcsl_vector_flag_sorted};
}

/* Ends the sorted state when the new item at `index` is out of order with a neighbour. */
template <class Vector>
void zcsl_vector_check_neighbours(Vector* vector, uint32_t index) {
  const auto below_previous = [&](uint32_t i) {
    return vector->order(vector->at(i), vector->at(i - 1)) < 0;
  };
  if (!vector->sorted()) return;
  if ((index > 0 && below_previous(index)) ||
      (index + 1 < vector->count && below_previous(index + 1))) {
    zcsl_vector_end_sorted(vector);
  }
}

/* Stores the order. A new one ends the sorted state. */
template <class Vector>
void zcsl_vector_set_order(Vector* vector, zcsl_vector_compare_fn compare) {
  if (compare != vector->compare) zcsl_vector_end_sorted(vector);
  vector->compare = compare;
}

/* Runs `sort` when the items are not in order already, or anyhow. */
template <class Vector, class Sort>
zvsdk_status zcsl_vector_bring_in_order(Vector* vector, bool force, Sort&& sort) {
  if (vector->sorted() && !force) return 0;
  const zvsdk_status status = vector->count != 0 ? sort() : 0;
  if (!status) vector->flags |= zcsl_vector_flag_sorted;
  return status;
}

/* The whole count operation. A null vector counts 0. */
template <class Vector>
zvsdk_status zcsl_vector_operate_count(Vector* vector, uint32_t* count,
                                       uint32_t line = __builtin_LINE()) {
  if (!vector && count) {
    *count = 0;
    return 0;
  }
  return zcsl_container_operate(
      vector, count != nullptr,
      [&] {
        *count = vector->count;
        return zvsdk_status{0};
      },
      line);
}

/* The whole foreach operation. */
template <class Vector>
zvsdk_status zcsl_vector_operate_foreach(Vector* vector, zcsl_vector_foreach_fn callback,
                                         void* context, uint32_t line = __builtin_LINE()) {
  return zcsl_container_operate(
      vector, callback != nullptr,
      [&] {
        for (uint32_t i = 0; i < vector->count; ++i) {
          if (!callback(context, vector->at(i))) return zcsl_warn_aborted;
        }
        return zvsdk_status{0};
      },
      line);
}

#endif
