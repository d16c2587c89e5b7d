// The record of one attached printer, and the operation that exchanges bytes with it.
//
// Threads: a record is filled by the thread that makes it, before other threads see it. After that it may be
// read from any thread. Exchanges block their thread for as long as the drain, the write and the reads take;
// whatever the printer sends, the transport ends the drain after 5 seconds and the reads after two time-outs.
// Two exchanges on one record at the same time do no harm, but the completion of the later one then serves
// both.
#pragma once

#include "Platform/Locking/Mutex.h"
#include "Platform/Runtime/Object/NSBlock.h"
#include "Platform/Transport/PrinterUri.h"

#include <atomic>
#include <cstdint>

class NSData;
class NSString;

/// Receives the reply of an exchange: header and data, either of which may be none. (none, none) means that
/// the transport failed. Called at most twice per exchange, on the exchange's thread.
using ExchangeCompletion = Block<void(const Ref<NSData> &header, const Ref<NSData> &data)>;

class ZKUSB : public NSObject {
    NS_CLASS(ZKUSB, NSObject)
public:
    /// The product (model) text, as the device reports it.
    Ref<NSString> printerType() const { return printerType_; }
    void setPrinterType(const Ref<NSString> &text) { printerType_ = copied(text); }
    Ref<NSString> serialNumber() const { return serialNumber_; }
    void setSerialNumber(const Ref<NSString> &text) { serialNumber_ = copied(text); }
    /// Always none in this program; the log shows it.
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

    /// "usb://manufacturer/printerName?serial=serialNumber", percent-encoded. Made on every read and stored,
    /// so that a URI that was set before is lost.
    Ref<NSString> URI();
    void setURI(const Ref<NSString> &text);

    /// What the URI is made of: manufacturer, printerName and serialNumber; "(null)" for a text that is none.
    transport::PrinterIdentity identity() const;

    /// The completion of the latest exchange; the record holds it weakly.
    Ref<ExchangeCompletion> receiveCallback() const;
    void setReceiveCallback(const Ref<ExchangeCompletion> &completion);

    /// One exchange: opens the printer, discards what it still has queued, writes the request as given and
    /// reads the reply header and the reply data.
    ///
    /// `timeout` is in milliseconds and bounds the write and each read. The caller has to hold the completion
    /// during the call. A request of none is sent as an empty one. The completion gets:
    ///
    /// | what happened                                          | (header, data)                     |
    /// |--------------------------------------------------------|------------------------------------|
    /// | not openable, write failed, no reply                   | (none, none)                       |
    /// | header shorter than 8 bytes, or zero at offset 4 or 6  | (header, none)                     |
    /// | data of the announced length                           | (header, data)                     |
    /// | data of another length                                 | (header, data); the data then      |
    /// |                                                        | counts as a transfer of its own,   |
    /// |                                                        | but a second call ends the exchange|
    /// | a transfer that begins 00 xx or xx AC                  | no call: the exchange just ends    |
    /// | any other transfer instead of a header                 | no call: the transfer is skipped   |
    void sendACLWithPJL(const Ref<NSData> &request, std::int32_t timeout,
                        const Ref<ExchangeCompletion> &receiveCallback);

    /// The status, of zkcomtl.h, of the latest step (open, write or read) of the latest exchange. While the
    /// completion runs, it is the reason why that got less than (header, data). Any thread.
    std::int32_t transportStatus() const { return transportStatus_; }
    void setTransportStatus(std::int32_t status) { transportStatus_ = status; }

private:
    static Ref<NSString> copied(const Ref<NSString> &text);

    Ref<NSString> printerType_;
    Ref<NSString> serialNumber_;
    Ref<NSString> ip_;
    std::uint64_t PID_ = 0;
    std::uint64_t VID_ = 0;
    Ref<NSString> URI_ ZK_GUARDED_BY(exchangeFields_);
    Ref<NSString> manufacturer_;
    Ref<NSString> printerName_;
    Weak<ExchangeCompletion> receiveCallback_ ZK_GUARDED_BY(exchangeFields_);
    std::atomic<std::int32_t> transportStatus_ = 0;
    mutable locking::Mutex exchangeFields_; // what every exchange writes
};
