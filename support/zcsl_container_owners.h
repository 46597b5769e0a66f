/*
 * zcsl_container_owners.h: an owner for each kind of container (see zcsl_owners.h). Internal.
 */
#ifndef ZCSL_CONTAINER_OWNERS_H
#define ZCSL_CONTAINER_OWNERS_H

#include "support/zcsl_hashmap.h"
#include "support/zcsl_hashtable.h"
#include "support/zcsl_lrumap.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_stack.h"
#include "support/zcsl_stringmap.h"
#include "support/zcsl_stringtable.h"
#include "support/zcsl_vector.h"
#include "support/zcsl_vector2.h"

using zcsl_vector_owner = zcsl_owner<zcsl_vector, zcsl_vector_delete>;
using zcsl_vector2_owner = zcsl_owner<zcsl_vector2, zcsl_vector2_delete>;
using zcsl_stack_owner = zcsl_owner<zcsl_stack, zcsl_stack_delete>;
using zcsl_hashmap_owner = zcsl_owner<zcsl_hashmap, zcsl_hashmap_delete>;
using zcsl_lrumap_owner = zcsl_owner<zcsl_lrumap, zcsl_lrumap_delete>;
using zcsl_hashtable_owner = zcsl_owner<zcsl_hashtable, zcsl_hashtable_delete>;
using zcsl_stringmap_owner = zcsl_owner<zcsl_stringmap, zcsl_stringmap_delete>;
using zcsl_stringtable_owner = zcsl_owner<zcsl_stringtable, zcsl_stringtable_delete>;

#endif
