// Classes and selectors by the texts that name them. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"
#include "Platform/Runtime/Object/SEL.h"

class NSString;

/// Null for none.
SEL NSSelectorFromString(const Ref<NSString> &name);
/// None for null.
Ref<NSString> NSStringFromSelector(SEL selector);
/// Null for none and for a name that no class has.
Class NSClassFromString(const Ref<NSString> &name);
/// None for null. A meta-class has the name of its class.
Ref<NSString> NSStringFromClass(Class cls);
