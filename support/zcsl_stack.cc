// The stack. Finished nodes go through one place, which keeps the last of them as the spare that
// the next push takes.

#include "support/zcsl_stack.h"

#include <utility>

#include "support/zcsl_container.h"
#include "support/zcsl_links.h"
#include "support/zcsl_vector.h"

namespace {

struct stack_node {
  void* value;
  stack_node* below;
  stack_node* above;
};

}  // namespace

struct zcsl_stack : zcsl_container_head<0xABC56DEF, zcsl_critsec> {
  static constexpr const char* source = "zcsl_stack";

  uint32_t count = 0;
  stack_node* top = nullptr;
  stack_node* bottom = nullptr;
  stack_node* spare = nullptr;
  zcsl_stack_free_fn free = nullptr;
};

namespace {

using upward = zcsl_links<&stack_node::above, &stack_node::below>;

void link_on_top(zcsl_stack* stack, stack_node* node, void* value) {
  node->value = value;
  upward::append(stack->bottom, stack->top, node);
  ++stack->count;
}

stack_node* unlink_top(zcsl_stack* stack) {
  stack_node* node = stack->top;
  upward::remove(stack->bottom, stack->top, node);
  --stack->count;
  return node;
}

// Frees the value that the node still holds and keeps the node for the next push.
void finish(zcsl_stack* stack, stack_node* node) {
  if (stack->free && node->value) stack->free(node->value);
  zcsl_memory_free(std::exchange(stack->spare, node));
}

zvsdk_status pop(zcsl_stack* stack, void** value) {
  if (!stack->top) return zcsl_warn_not_found;
  stack_node* node = unlink_top(stack);
  if (value) *value = std::exchange(node->value, nullptr);
  finish(stack, node);
  return 0;
}

zvsdk_status drain(zcsl_stack* stack) {
  while (stack->top) pop(stack, nullptr);
  zcsl_memory_free(std::exchange(stack->spare, nullptr));
  return 0;
}

// One whole operation. All of the family give the rarer code for a wrong magic.
template <class Work>
zvsdk_status operate(zcsl_stack* stack, bool arguments, Work&& work,
                     uint32_t line = __builtin_LINE()) {
  return zcsl_container_operate(stack, zcsl_error_bad_magic_320, arguments, work, line);
}

}  // namespace

zvsdk_status zcsl_stack_create(zcsl_stack** stack, uint32_t flags, zcsl_stack_free_fn free_value) {
  zvsdk_status status = zcsl_container_make(stack);
  if (!status) {
    (*stack)->free = free_value;
    if (flags & zcsl_vector_flag_threadsafe) status = zcsl_thread_critsec_create(&(*stack)->lock);
  }
  return zcsl_container_logged<zcsl_stack>(status);
}

zvsdk_status zcsl_stack_delete(zcsl_stack* stack) {
  if (!stack) return 0;
  const zvsdk_status status = operate(stack, true, [&] { return drain(stack); });
  return status ? status : zcsl_container_end(stack);
}

// The allocation is made outside the lock, so a stack without a spare is entered twice.
zvsdk_status zcsl_stack_push(zcsl_stack* stack, void* value) {
  bool done = false;
  const zvsdk_status status = operate(stack, true, [&] {
    if (stack_node* node = std::exchange(stack->spare, nullptr)) {
      link_on_top(stack, node, value);
      done = true;
    }
    return zvsdk_status{0};
  });
  if (status || done) return status;
  void* block = zcsl_memory_alloc(sizeof(stack_node));
  if (!block) return zcsl_container_logged<zcsl_stack>(zcsl_error_no_memory);
  const zvsdk_status linked = operate(stack, true, [&] {
    link_on_top(stack, static_cast<stack_node*>(block), value);
    return zvsdk_status{0};
  });
  if (linked) zcsl_memory_free(block);
  return linked;
}

zvsdk_status zcsl_stack_pop(zcsl_stack* stack, void** value) {
  return operate(stack, true, [&] { return pop(stack, value); });
}

zvsdk_status zcsl_stack_top(zcsl_stack* stack, void** value) {
  return operate(stack, value != nullptr, [&] {
    if (!stack->top) return zcsl_warn_not_found;
    *value = stack->top->value;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_stack_count(zcsl_stack* stack, uint32_t* count) {
  return operate(stack, count != nullptr, [&] {
    *count = stack->count;
    return zvsdk_status{0};
  });
}
