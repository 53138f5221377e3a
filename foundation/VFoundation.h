#pragma once

/// The whole library.

#include "foundation/core/NarrowCast.h"
#include "foundation/core/Registered.h"
#include "foundation/core/TRefCounted.h"
#include "foundation/core/VAtomicOp.h"
#include "foundation/core/VClass.h"
#include "foundation/core/VObject.h"
#include "foundation/core/VObjectRef.h"
