// Must not compile: declares a property whose type has the encoding `SPAN_ENCODING`.
#include "Platform/Runtime/Object/Class.h"

struct Span {
    double from, to;
};
template <>
inline constexpr const char *runtime::customEncoding<Span> = SPAN_ENCODING;

class Ruler : public NSObject {
    NS_CLASS(Ruler, NSObject)
public:
    Span span;
};
NS_IMPLEMENTATION(Ruler) {
    cls.property<&Ruler::span>("span");
}
