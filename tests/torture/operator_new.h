/*
 * operator_new.h: puts operator new under the same count as the zcsl_memory_* family.
 */
#ifndef OPERATOR_NEW_H
#define OPERATOR_NEW_H

#include "tests/common/failing_memory.h"

/* Whoever counts and refuses; null while nobody does. */
extern failing_memory* g_new_counter;

#endif
