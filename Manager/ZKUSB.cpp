#include "Manager/ZKUSB.h"

#include "Manager/UsbExchange.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(ZKUSB) {}

Ref<NSString> ZKUSB::copied(const Ref<NSString> &text) {
    return text ? as<NSString>(text->copy()) : nullptr;
}

Ref<NSString> ZKUSB::URI() {
    setURI(NSString::stringWithUTF8String(transport::printerUri(identity())));
    const locking::MutexLock guard(exchangeFields_);
    return URI_;
}

transport::PrinterIdentity ZKUSB::identity() const {
    const auto shown = [](const Ref<NSString> &text) { return text ? text->utf8() : "(null)"; };
    return {shown(manufacturer_), shown(printerName_), shown(serialNumber_)};
}

void ZKUSB::setURI(const Ref<NSString> &text) {
    const locking::MutexLock guard(exchangeFields_);
    URI_ = copied(text);
}

Ref<ExchangeCompletion> ZKUSB::receiveCallback() const {
    const locking::MutexLock guard(exchangeFields_);
    return receiveCallback_.lock();
}

void ZKUSB::setReceiveCallback(const Ref<ExchangeCompletion> &completion) {
    const locking::MutexLock guard(exchangeFields_);
    receiveCallback_ = completion;
}

void ZKUSB::sendACLWithPJL(const Ref<NSData> &request, std::int32_t timeout,
                           const Ref<ExchangeCompletion> &receiveCallback) {
    const id keep = self(); // the completion may let the record go
    setReceiveCallback(receiveCallback);
    UsbExchange(*this, timeout).run(request ? *request : *NSData::data());
}
