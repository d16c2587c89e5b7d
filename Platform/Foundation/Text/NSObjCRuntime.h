// Classes and selectors by name. Safe from any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"
#include "Platform/Runtime/Object/SEL.h"

#pragma GCC visibility push(default)

class NSString;

/// Null for none. Makes the selector on first use, for good; for names from outside see
/// `runtime::registerForeignName`.
SEL NSSelectorFromString(const Ref<NSString> &name);
/// None for null.
Ref<NSString> NSStringFromSelector(SEL selector);
/// Null for none and for an unknown name. Raises what `objc_getClass` raises.
Class NSClassFromString(const Ref<NSString> &name);
/// None for null. A meta-class has the name of its class.
Ref<NSString> NSStringFromClass(Class cls);

#pragma GCC visibility pop
