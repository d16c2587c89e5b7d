#include "Tests/Frameworks/QNCategoriesPro/Foundation/NSObject/ModelTesting.h"

#include "Platform/Foundation/Serialization/Archive/NSCoder.h"

NS_IMPLEMENTATION(Node) {
    cls.property<&Node::next>("next")
        .method<&Node::encodeWithCoder>("encodeWithCoder:")
        .method<&Node::initWithCoder>("initWithCoder:");
}

NS_IMPLEMENTATION(Everything) {
    cls.property<&Everything::flag>("flag")
        .property<&Everything::whole>("whole")
        .property<&Everything::large>("large")
        .property<&Everything::real>("real")
        .property<&Everything::wide>("wide")
        .property<&Everything::text>("text")
        .property<&Everything::data>("data")
        .property<&Everything::value>("value")
        .property<&Everything::type>("type")
        .property<&Everything::action>("action")
        .property<&Everything::pointer>("pointer")
        .property<&Everything::block>("block")
        .property<&Everything::size>("size")
        .property<&Everything::numbers>("numbers");
}
