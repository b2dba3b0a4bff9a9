#include "addin/settings/cRegistry.h"

namespace marelon {

namespace {

bool ListNames(const std::optional<QStringList>& names, QStringList& list, int& count)
{
    list = names.value_or(QStringList());
    count = static_cast<int>(list.size());
    return names.has_value();
}

std::optional<std::uint32_t> Dword(const QVariant& value)
{
    bool ok = false;
    const qlonglong number = value.toLongLong(&ok);
    return ok ? DwordBits(number) : std::nullopt;
}

} // namespace

cRegistry::cRegistry()
    : cRegistry(DefaultRegistryBackend())
{
}

cRegistry::cRegistry(std::shared_ptr<RegistryBackend> backend)
    : backend_(std::move(backend))
{
}

QString cRegistry::Root() const
{
    return QString::number(classKey_);
}

QVariant cRegistry::Value()
{
    const std::optional<RegistryValue> stored = backend_->QueryValue(classKey_, sectionKey_, valueKey_);
    if (!stored)
        return default_;
    valueType_ = stored->type;
    switch (stored->type) {
    case kRegSz:
    case kRegMultiSz:
        return DataText(stored->data);
    case kRegExpandSz:
        return ExpandEnvironmentReferences(DataText(stored->data));
    case kRegDword:
    case kRegDwordBigEndian:
        return static_cast<std::int32_t>(DwordNumber(*stored));
    default:
        return stored->data;
    }
}

void cRegistry::setValue(const QVariant& value)
{
    if (!backend_->CreateKey(classKey_, sectionKey_))
        throw WriteFailure(value);
    switch (valueType_) {
    case kRegSz:
    case kRegExpandSz: {
        const QString text = value.toString();
        Store({HasEnvironmentReference(text) ? kRegExpandSz : kRegSz, TextData(text)}, value);
        break;
    }
    case kRegBinary:
        if (value.typeId() != QMetaType::QByteArray)
            throw WriteFailure(value);
        Store({kRegBinary, value.toByteArray()}, value);
        break;
    case kRegDword:
    case kRegDwordBigEndian: {
        const std::optional<std::uint32_t> number = Dword(value);
        if (!number)
            throw WriteFailure(value);
        Store({kRegDword, DwordData(*number)}, value);
        break;
    }
    default:
        break;
    }
}

void cRegistry::Store(const RegistryValue& stored, const QVariant& value)
{
    if (!backend_->SetValue(classKey_, sectionKey_, valueKey_, stored))
        throw WriteFailure(value);
}

RegistryError cRegistry::WriteFailure(const QVariant& value) const
{
    return RegistryError(QStringLiteral("Failed to set registry value Key: '") + Root()
                         + QStringLiteral("',Section: '") + sectionKey_ + QStringLiteral("',Key: '")
                         + valueKey_ + QStringLiteral("' to value: '") + value.toString()
                         + QStringLiteral("'"));
}

bool cRegistry::KeyExists()
{
    return backend_->KeyExists(classKey_, sectionKey_);
}

void cRegistry::CreateKey()
{
    if (!backend_->CreateKey(classKey_, sectionKey_))
        throw RegistryError(QStringLiteral("Failed to create registry Key: '") + sectionKey_);
}

void cRegistry::DeleteKey()
{
    if (!backend_->DeleteKey(classKey_, sectionKey_))
        throw RegistryError(QStringLiteral("Failed to delete registry Key: '") + Root()
                            + QStringLiteral("',Section: '") + sectionKey_);
}

void cRegistry::DeleteValue()
{
    switch (backend_->DeleteValue(classKey_, sectionKey_, valueKey_)) {
    case RegistryBackend::DeleteValueResult::Deleted:
        return;
    case RegistryBackend::DeleteValueResult::KeyNotOpened:
        throw RegistryError(QStringLiteral("Failed to open key '") + Root()
                            + QStringLiteral("',Section: '") + sectionKey_
                            + QStringLiteral("' for delete access"));
    case RegistryBackend::DeleteValueResult::ValueNotDeleted:
        throw RegistryError(QStringLiteral("Failed to delete registry Key: '") + Root()
                            + QStringLiteral("',Section: '") + sectionKey_
                            + QStringLiteral("',Key: '") + valueKey_);
    }
}

bool cRegistry::EnumerateValues(QStringList& sKeyNames, int& iKeyCount)
{
    return ListNames(backend_->ValueNames(classKey_, sectionKey_), sKeyNames, iKeyCount);
}

bool cRegistry::EnumerateSections(QStringList& sSect, int& iSectCount)
{
    return ListNames(backend_->SubkeyNames(classKey_, sectionKey_), sSect, iSectCount);
}

QString ExpandEnvironmentReferences(const QString& text)
{
    QString expanded;
    qsizetype from = 0;
    for (;;) {
        const qsizetype open = text.indexOf(QLatin1Char('%'), from);
        const qsizetype close = open < 0 ? -1 : text.indexOf(QLatin1Char('%'), open + 1);
        if (close < 0)
            return expanded + text.mid(from);
        const QByteArray name = text.mid(open + 1, close - open - 1).toLocal8Bit();
        if (!name.isEmpty() && qEnvironmentVariableIsSet(name.constData())) {
            expanded += text.mid(from, open - from) + qEnvironmentVariable(name.constData());
            from = close + 1;
        } else {
            // The closing "%" may open the next reference.
            expanded += text.mid(from, close - from);
            from = close;
        }
    }
}

bool HasEnvironmentReference(const QString& text)
{
    const qsizetype first = text.indexOf(QLatin1Char('%'));
    return first >= 0 && text.lastIndexOf(QLatin1Char('%')) - first >= 2;
}

} // namespace marelon
