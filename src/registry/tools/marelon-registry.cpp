// marelon-registry: reads and changes typed values in the registry the add-in
// reads (on Linux the file-backed hive), e.g. to switch the reduced machine list:
//   marelon-registry set HKLM 'Software\Orvalen\FELDRA\AddIns\Marelon.Connect' TovricVersion dword 1

#include "registry/FileRegistryHive.h"
#include "registry/RegistryBackend.h"

#include <QCoreApplication>
#include <QTextStream>

#include <array>

using namespace registry;

namespace {

struct TypeName {
    std::int32_t type;
    const char* name;
};

constexpr std::array<TypeName, 6> kTypeNames{{
    {kRegSz, "sz"},
    {kRegExpandSz, "expand_sz"},
    {kRegBinary, "binary"},
    {kRegDword, "dword"},
    {kRegDwordBigEndian, "dword_be"},
    {kRegMultiSz, "multi_sz"},
}};

QTextStream& Out()
{
    static QTextStream out(stdout);
    return out;
}

QTextStream& Err()
{
    static QTextStream err(stderr);
    return err;
}

int Usage()
{
    Err() << "usage: marelon-registry set ROOT SECTION NAME TYPE VALUE...\n"
             "       marelon-registry get ROOT SECTION NAME\n"
             "       marelon-registry delete ROOT SECTION NAME\n"
             "       marelon-registry list ROOT SECTION\n"
             "ROOT: HKCR, HKCU, HKLM, HKU, HKCC or the full HKEY_ name.\n"
             "SECTION: the key path, parts separated by \\ (quote it for the shell).\n"
             "TYPE: sz, expand_sz, binary (VALUE in hexadecimal), dword, dword_be\n"
             "      (VALUE decimal or 0x hexadecimal), multi_sz (one VALUE per string)\n"
             "      or a type number (VALUE in hexadecimal).\n";
#ifndef _WIN32
    Err() << "Hive folder: " << FileRegistryHive::DefaultFolder()
          << " (set MARELON_REGISTRY_DIR to use another).\n";
#endif
    return 2;
}

int Fail(const QString& message)
{
    Err() << "marelon-registry: " << message << "\n";
    return 1;
}

std::optional<std::int32_t> TypeFromName(const QString& name)
{
    QString bare = name.toLower();
    if (bare.startsWith(QStringLiteral("reg_")))
        bare = bare.mid(4);
    for (const TypeName& t : kTypeNames) {
        if (bare == QLatin1String(t.name))
            return t.type;
    }
    bool ok = false;
    const int number = name.toInt(&ok);
    return ok && number >= 0 ? std::optional(number) : std::nullopt;
}

QString NameOfType(std::int32_t type)
{
    for (const TypeName& t : kTypeNames) {
        if (t.type == type)
            return QLatin1String(t.name);
    }
    return QString::number(type);
}

std::optional<QByteArray> HexBytes(const QString& text)
{
    const QByteArray hex = text.toLatin1();
    const QByteArray bytes = QByteArray::fromHex(hex);
    return bytes.toHex() == hex.toLower() ? std::optional(bytes) : std::nullopt;
}

std::optional<QByteArray> DwordBytes(std::int32_t type, const QString& text)
{
    bool ok = false;
    const std::optional<std::uint32_t> number = DwordBits(text.toLongLong(&ok, 0));
    if (!ok || !number)
        return std::nullopt;
    return DwordValue(type, *number).data;
}

std::optional<QByteArray> ValueData(std::int32_t type, const QStringList& values)
{
    if (type == kRegMultiSz)
        return TextData(values.join(QChar(u'\0')) + QChar(u'\0'));
    if (values.size() != 1)
        return std::nullopt;
    switch (type) {
    case kRegSz:
    case kRegExpandSz:
        return TextData(values.first());
    case kRegDword:
    case kRegDwordBigEndian:
        return DwordBytes(type, values.first());
    default:
        return HexBytes(values.first());
    }
}

QString ShownValue(const RegistryValue& value)
{
    switch (value.type) {
    case kRegSz:
    case kRegExpandSz:
        return DataText(value.data);
    case kRegMultiSz:
        return DataText(value.data).split(QChar(u'\0'), Qt::SkipEmptyParts).join(QLatin1Char('\n'));
    case kRegDword:
    case kRegDwordBigEndian:
        return QString::number(DwordNumber(value));
    default:
        return QString::fromLatin1(value.data.toHex());
    }
}

int Set(RegistryBackend& registry, std::int32_t root, const QStringList& args)
{
    const std::optional<std::int32_t> type = TypeFromName(args[3]);
    if (!type)
        return Usage();
    const std::optional<QByteArray> data = ValueData(*type, args.mid(4));
    if (!data)
        return Fail(QStringLiteral("the value does not fit the type ") + NameOfType(*type));
    if (!registry.CreateKey(root, args[1]) || !registry.SetValue(root, args[1], args[2], {*type, *data}))
        return Fail(QStringLiteral("cannot write the value"));
    return 0;
}

int Get(RegistryBackend& registry, std::int32_t root, const QStringList& args)
{
    const std::optional<RegistryValue> value = registry.QueryValue(root, args[1], args[2]);
    if (!value)
        return Fail(QStringLiteral("no such value"));
    Out() << NameOfType(value->type) << ' ' << ShownValue(*value) << "\n";
    return 0;
}

int Delete(RegistryBackend& registry, std::int32_t root, const QStringList& args)
{
    if (registry.DeleteValue(root, args[1], args[2]) != RegistryBackend::DeleteValueResult::Deleted)
        return Fail(QStringLiteral("no such value, or it cannot be deleted"));
    return 0;
}

int List(RegistryBackend& registry, std::int32_t root, const QStringList& args)
{
    const std::optional<QStringList> keys = registry.SubkeyNames(root, args[1]);
    const std::optional<QStringList> values = registry.ValueNames(root, args[1]);
    if (!keys || !values)
        return Fail(QStringLiteral("no such key"));
    for (const QString& key : *keys)
        Out() << key << "\\\n";
    for (const QString& name : *values)
        Out() << name << "\n";
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.size() < 3)
        return Usage();
    const QString command = args.takeFirst();
    const std::optional<std::int32_t> root = RootFromName(args[0]);
    if (!root)
        return Usage();
    const std::shared_ptr<RegistryBackend> registry = DefaultRegistryBackend();
    if (command == QLatin1String("set") && args.size() >= 5)
        return Set(*registry, *root, args);
    if (command == QLatin1String("get") && args.size() == 3)
        return Get(*registry, *root, args);
    if (command == QLatin1String("delete") && args.size() == 3)
        return Delete(*registry, *root, args);
    if (command == QLatin1String("list") && args.size() == 2)
        return List(*registry, *root, args);
    return Usage();
}
