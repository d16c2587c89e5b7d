// The document mapped by Qt: its JSON document, and the properties of gadgets read and written by name.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QStringList>
#include <QUrl>
#include <string>

class QtContact {
    Q_GADGET
    Q_PROPERTY(qint32 identifier MEMBER identifier)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString mail MEMBER mail)
    Q_PROPERTY(bool active MEMBER active)
public:
    qint32 identifier = 0;
    QString name, mail;
    bool active = false;

    bool operator==(const QtContact &) const = default;
};

class QtPrinter {
    Q_GADGET
    Q_PROPERTY(bool enabled MEMBER enabled)
    Q_PROPERTY(bool shared MEMBER shared)
    Q_PROPERTY(qint8 trays MEMBER trays)
    Q_PROPERTY(quint8 priority MEMBER priority)
    Q_PROPERTY(qint16 offset MEMBER offset)
    Q_PROPERTY(quint16 port MEMBER port)
    Q_PROPERTY(qint32 jobs MEMBER jobs)
    Q_PROPERTY(quint32 flags MEMBER flags)
    Q_PROPERTY(qint64 balance MEMBER balance)
    Q_PROPERTY(quint64 printed MEMBER printed)
    Q_PROPERTY(float density MEMBER density)
    Q_PROPERTY(double level MEMBER level)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString model MEMBER model)
    Q_PROPERTY(QString location MEMBER location)
    Q_PROPERTY(QString queue MEMBER queue)
    Q_PROPERTY(QString comment MEMBER comment)
    Q_PROPERTY(QString state MEMBER state)
    Q_PROPERTY(QDateTime installed MEMBER installed)
    Q_PROPERTY(QUrl address MEMBER address)
    Q_PROPERTY(QtContact contact MEMBER contact)
    Q_PROPERTY(QStringList tags MEMBER tags)
public:
    bool enabled = false, shared = false;
    qint8 trays = 0;
    quint8 priority = 0;
    qint16 offset = 0;
    quint16 port = 0;
    qint32 jobs = 0;
    quint32 flags = 0;
    qint64 balance = 0;
    quint64 printed = 0;
    float density = 0;
    double level = 0;
    QString name, model, location, queue, comment, state;
    QDateTime installed;
    QUrl address;
    QtContact contact;
    QStringList tags;
};

struct QtPrinters {
    using Text = QByteArray;
    using Objects = QList<QtPrinter>;

    static Text text(const std::string &document) { return QByteArray::fromStdString(document); }
    static Objects read(const Text &text);
    static Text write(const Objects &objects);
    static std::size_t count(const Objects &objects) { return static_cast<std::size_t>(objects.size()); }
};
