#include "Benchmarks/ModelMapping/QtPrinters.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaProperty>

namespace {

void fill(const QMetaObject &type, void *gadget, const QJsonObject &object) {
    for (int i = 0; i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const QJsonValue value = object.value(QLatin1String(property.name()));
        if (const QMetaObject *nested = property.metaType().metaObject()) {
            QVariant made(property.metaType());
            fill(*nested, made.data(), value.toObject());
            property.writeOnGadget(gadget, std::move(made));
        } else {
            property.writeOnGadget(gadget, value.toVariant());
        }
    }
}

QJsonObject objectOf(const QMetaObject &type, const void *gadget) {
    QJsonObject object;
    for (int i = 0; i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const QVariant value = property.readOnGadget(gadget);
        QJsonValue written;
        if (const QMetaObject *nested = property.metaType().metaObject())
            written = objectOf(*nested, value.constData());
        else if (property.metaType().sizeOf() < 4 && property.typeId() != QMetaType::Bool)
            written = value.toInt(); // a QJsonValue would make a text of a short number
        else
            written = QJsonValue::fromVariant(value);
        object.insert(QLatin1String(property.name()), written);
    }
    return object;
}

} // namespace

QtPrinters::Objects QtPrinters::read(const Text &text) {
    const QJsonArray array = QJsonDocument::fromJson(text).array();
    Objects objects(array.size());
    for (qsizetype i = 0; i < array.size(); ++i)
        fill(QtPrinter::staticMetaObject, &objects[i], array.at(i).toObject());
    return objects;
}

QtPrinters::Text QtPrinters::write(const Objects &objects) {
    QJsonArray array;
    for (const QtPrinter &printer : objects)
        array.append(objectOf(QtPrinter::staticMetaObject, &printer));
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}
