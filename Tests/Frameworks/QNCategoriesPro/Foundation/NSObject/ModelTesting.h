// Models that several tests share.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelValue.h"
#include "Platform/Foundation/Numbers/CGGeometry.h"
#include "Platform/Runtime/Object/NSBlock.h"
#include "Platform/Runtime/Object/NSProperties.h"
#include "Tests/Support/Objects.h"

/// Leads to anything, itself included.
class Node : public NSObject {
    NS_CLASS(Node, NSObject)
public:
    id next;

    NSUInteger hash() const override { return qn::modelHash(self()); }
    bool isEqual(const id &other) const override { return qn::modelIsEqual(self(), other); }
    void encodeWithCoder(const Ref<NSCoder> &coder) { qn::modelEncodeWithCoder(self(), coder); }
    id initWithCoder(const Ref<NSCoder> &coder) { return qn::modelInitWithCoder(self(), coder); }
};

/// A chain of nodes as deep as asked.
template <class T = Node>
Ref<Node> chain(int links) {
    Ref<Node> front;
    for (; links > 0; --links) {
        const auto node = make<T>();
        node->next = std::exchange(front, node);
    }
    return front;
}

/// Ends a chain from its front, which takes no stack.
inline void release(Ref<Node> node) {
    while (node)
        node = as<Node>(std::exchange(node->next, nullptr));
}

/// A property of every kind.
class Everything : public Node {
    NS_CLASS(Everything, Node)
public:
    bool flag = false;
    std::int16_t whole = 0;
    std::uint64_t large = 0;
    float real = 0;
    long double wide = 0;
    Ref<NSString> text;
    Ref<NSData> data;
    Ref<NSValue> value;
    Class type = nullptr;
    SEL action = nullptr;
    void *pointer = nullptr;
    Ref<NSBlock> block;
    CGSize size;
    std::int32_t numbers[2] = {};

    void fill() {
        next = arrayOf({number(1)});
        flag = true;
        whole = -5;
        large = UINT64_MAX;
        real = 0.5;
        wide = 2.5;
        text = u"a\nb"_ns;
        data = NSData::dataWithBytes("12345678", 8);
        value = NSValue::valueWithPointer(this);
        type = Node::class_();
        action = "run:"_sel;
        pointer = this;
        block = makeBlock<void()>([] {});
        size = {1, 2};
        numbers[1] = 7;
    }
};
