// Knows of all headers only that of one class.
#include <Platform/Foundation/Text/NSString.h>

#include <cstdio>

int main() {
    std::puts(NSString::stringWithUTF8String("one class")->strictUTF8()->c_str());
}
