// Values of a dictionary for properties of the runtime's types: classes, selectors, blocks, pointers and
// plain bytes.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"

namespace qn {

/// Sets the property to a value of these kinds:
///
/// | property          | value                                                                         |
/// |-------------------|-------------------------------------------------------------------------------|
/// | class             | a class, or the name of one that runtime::findForeignClass finds              |
/// | selector          | its name; new names only as long as runtime::registerForeignName takes them   |
/// | block             | a block                                                                       |
/// | pointer, C string | NSValue of "^v"; the memory stays the caller's                                |
/// | plain bytes       | NSValue of the type, set by key-value coding under the name of the property   |
///
/// Plain bytes are those of a structure, a union or a C array.
/// The null marker sets all but plain bytes to null; any other value changes nothing.
void setRuntimeValue(NSObject &model, const id &value, const _QNModelPropertyMeta &meta);

} // namespace qn
