// Must not compile: declares a property of the type `REFUSED`; if that is a `Span`, with the encoding
// `SPAN_ENCODING`.
#include "Platform/Runtime/Object/Class.h"

#include <vector>

struct Span {
    double from, to;
};
template <>
inline constexpr const char *runtime::customEncoding<Span> = SPAN_ENCODING;

class Ruler : public NSObject {
    NS_CLASS(Ruler, NSObject)
public:
    REFUSED span;
};
NS_IMPLEMENTATION(Ruler) {
    cls.property<&Ruler::span>("span");
}
