/*
 * zcsl_stack.h: a linked last-in-first-out list of pointer-sized values. Every operation is
 * constant time; one finished node is kept, so a steady rhythm of push and pop allocates nothing.
 *
 * With a free callback the stack owns its values; a pop with an output hands the value over. With
 * zcsl_vector_flag_threadsafe (0x01) a recursive lock guards each operation. Statuses as in
 * zcsl_vector.h.
 */
#ifndef ZCSL_STACK_H
#define ZCSL_STACK_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct zcsl_stack zcsl_stack;

/* Releases a value. */
typedef void (*zcsl_stack_free_fn)(void* value);

/*
 * An empty stack. When its lock cannot be made that code is returned with the stack in the output
 * all the same, to be deleted.
 */
ZVSDK_API zvsdk_status zcsl_stack_create(zcsl_stack** stack, uint32_t flags,
                                         zcsl_stack_free_fn free);
/* Frees the values from the top down, then the stack. */
ZVSDK_API zvsdk_status zcsl_stack_delete(zcsl_stack* stack);
/* Puts a value on top. */
ZVSDK_API zvsdk_status zcsl_stack_push(zcsl_stack* stack, void* value);
/* With a null `value` a popped value that is not null is freed. 0x100D0003 when empty. */
ZVSDK_API zvsdk_status zcsl_stack_pop(zcsl_stack* stack, void** value);
/* The value on top, which stays. 0x100D0003 when empty. */
ZVSDK_API zvsdk_status zcsl_stack_top(zcsl_stack* stack, void** value);
/* The number of values. */
ZVSDK_API zvsdk_status zcsl_stack_count(zcsl_stack* stack, uint32_t* count);

#ifdef __cplusplus
}
#endif

#endif
