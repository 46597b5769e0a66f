/*
 * zcsl_output.h: writing an optional output parameter. Internal.
 */
#ifndef ZCSL_OUTPUT_H
#define ZCSL_OUTPUT_H

#include <type_traits>

/* Stores the value where the caller wants it; a null output takes none. */
template <class Value>
void zcsl_give(Value* output, std::type_identity_t<Value> value) {
  if (output) *output = value;
}

#endif
