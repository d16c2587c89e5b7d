// The record of one printer that the USB transport can see, and the one operation that talks to it.
//
// Threads: a record is filled by the thread that makes it, before anybody else sees it. After that it may be
// read from any thread. Exchanges block their thread, for as long as the drain, the write and the reads take:
// whatever the printer sends, the transport ends the drain after 5 seconds and the reads after two time-outs.
// Two exchanges on one record at a time do no harm, but the completion of the later one then serves both.
#pragma once

#include "Platform/Runtime/Object/NSBlock.h"
#include "Platform/Transport/PrinterUri.h"

#include <atomic>
#include <cstdint>
#include <mutex>

class NSData;
class NSString;

/// Receives the reply of an exchange: header and data, either of which may be none. (none, none) means that
/// the transport failed. Called never, once or twice an exchange, on the exchange's thread.
using ExchangeCompletion = Block<void(const Ref<NSData> &header, const Ref<NSData> &data)>;

class ZKUSB : public NSObject {
    NS_CLASS(ZKUSB, NSObject)
public:
    /// The product (model) text, as the device reports it.
    Ref<NSString> printerType() const { return printerType_; }
    void setPrinterType(const Ref<NSString> &text) { printerType_ = copied(text); }
    Ref<NSString> serialNumber() const { return serialNumber_; }
    void setSerialNumber(const Ref<NSString> &text) { serialNumber_ = copied(text); }
    /// Nothing in the system assigns it; the log shows it.
    Ref<NSString> ip() const { return ip_; }
    void setIp(const Ref<NSString> &text) { ip_ = copied(text); }
    std::uint64_t PID() const { return PID_; }
    void setPID(std::uint64_t identifier) { PID_ = identifier; }
    std::uint64_t VID() const { return VID_; }
    void setVID(std::uint64_t identifier) { VID_ = identifier; }
    Ref<NSString> manufacturer() const { return manufacturer_; }
    void setManufacturer(const Ref<NSString> &text) { manufacturer_ = copied(text); }
    Ref<NSString> printerName() const { return printerName_; }
    void setPrinterName(const Ref<NSString> &text) { printerName_ = copied(text); }

    /// "usb://manufacturer/printerName?serial=serialNumber", percent-encoded, built anew on every read and
    /// stored; what was assigned before is overwritten.
    Ref<NSString> URI();
    void setURI(const Ref<NSString> &text);

    /// What the URI is made of: manufacturer, printerName and serialNumber; "(null)" for one that is none.
    transport::PrinterIdentity identity() const;

    /// The completion of the latest exchange, if somebody still holds it: the record does not.
    Ref<ExchangeCompletion> receiveCallback() const;
    void setReceiveCallback(const Ref<ExchangeCompletion> &completion);

    /// One exchange: opens the printer, discards what it still has queued, writes the request as given and
    /// reads the reply header and the reply data.
    ///
    /// `timeout` is in milliseconds and bounds the write and each read. The completion must be held by the
    /// caller for the duration of the call. It gets:
    ///
    /// | what happened                                          | (header, data)                     |
    /// |--------------------------------------------------------|------------------------------------|
    /// | not openable, write failed, no reply                   | (none, none)                       |
    /// | header shorter than 8 bytes, or zero at offset 4 or 6  | (header, none)                     |
    /// | data of the announced length                           | (header, data)                     |
    /// | data of another length                                 | (header, data); the data then      |
    /// |                                                        | counts as a transfer of its own,   |
    /// |                                                        | but a second call ends the exchange|
    /// | a transfer that begins 00 xx or xx AC                  | nothing: the exchange just ends    |
    /// | any other transfer in place of a header                | nothing: it is skipped             |
    void sendACLWithPJL(const Ref<NSData> &request, std::int32_t timeout,
                        const Ref<ExchangeCompletion> &receiveCallback);

    /// How the transport ended the latest step (open, write or read) of the latest exchange: a status of
    /// zkcomtl.h. Read while the completion runs, it tells why that got less than (header, data). Any thread.
    std::int32_t transportStatus() const { return transportStatus_; }
    void setTransportStatus(std::int32_t status) { transportStatus_ = status; }

private:
    static Ref<NSString> copied(const Ref<NSString> &text);

    Ref<NSString> printerType_;
    Ref<NSString> serialNumber_;
    Ref<NSString> ip_;
    std::uint64_t PID_ = 0;
    std::uint64_t VID_ = 0;
    Ref<NSString> URI_;
    Ref<NSString> manufacturer_;
    Ref<NSString> printerName_;
    Weak<ExchangeCompletion> receiveCallback_;
    std::atomic<std::int32_t> transportStatus_ = 0;
    mutable std::mutex exchangeFields_; // URI_ and receiveCallback_, which every exchange writes
};
