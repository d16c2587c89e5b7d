#include "Benchmarks/ModelMapping/Document.h"

namespace {

std::string printer(int i) {
    const auto number = std::to_string(i);
    const auto flag = [&](int period) { return i % period ? "true" : "false"; };
    return R"({"enabled":)" + std::string(flag(3)) + R"(,"shared":)" + flag(2) + R"(,"trays":)" +
           std::to_string(i % 5) + R"(,"priority":)" + std::to_string(i % 200) + R"(,"offset":)" +
           std::to_string(i % 3000 - 1500) + R"(,"port":)" + std::to_string(9100 + i % 50000) +
           R"(,"jobs":)" + std::to_string(i * 1000 - 70000) + R"(,"flags":)" +
           std::to_string(3000000000u + static_cast<unsigned>(i)) + R"(,"balance":-900719925474)" + number +
           R"(,"printed":1234567890)" + number + R"(,"density":0.)" + std::to_string(25 + 50 * (i % 2)) +
           R"(,"level":)" + number + R"(.0625,"name":"Printer )" + number +
           R"(","model":"Zelkor Laser 2100","location":"Bürogebäude, floor )" + std::to_string(i % 9) +
           R"(","queue":"zelkor_)" + number +
           R"(","comment":"Says \"low toner\" early.\nAsk at the desk.","state":"idle","installed":"2014-01-)" +
           std::to_string(10 + i % 20) + R"(T12:24:48Z","address":"ipp://printers.example/)" + number +
           R"(","contact":{"identifier":)" + number + R"(,"name":"Person )" + number + R"(","mail":"p)" +
           number + R"(@example.org","active":)" + flag(4) + R"(},"tags":["usb","toner","floor","duplex"]})";
}

} // namespace

std::string printersDocument(int count) {
    std::string text = "[";
    for (int i = 0; i < count; ++i)
        text += (i ? "," : "") + printer(i);
    return text + "]";
}
