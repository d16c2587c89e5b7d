#include "Tests/Frameworks/QNCategoriesPro/Foundation/NSObject/ModelTesting.h"

#include "Platform/Foundation/Serialization/Archive/NSCoder.h" // IWYU pragma: keep: it is the complete type

NS_IMPLEMENTATION(Node) {
    cls.property<&Node::next>("next")
        .method<&Node::encodeWithCoder>("encodeWithCoder:")
        .method<&Node::initWithCoder>("initWithCoder:");
}

NS_PROPERTIES(Everything, flag, whole, large, real, wide, text, data, value, type, action, pointer, block,
              size, numbers)
