#include "registry/RegistryBackend.h"

#include "registry/FileRegistryHive.h"
#ifdef _WIN32
#include "registry/WinRegistryBackend.h"
#endif

#include <QtEndian>

#include <array>
#include <limits>

namespace registry {

namespace {

struct RootNames {
    std::int32_t root;
    const char* name;
    const char* shortName;
};

constexpr std::array<RootNames, 7> kRoots{{
    {kHKeyClassesRoot, "HKEY_CLASSES_ROOT", "HKCR"},
    {kHKeyCurrentUser, "HKEY_CURRENT_USER", "HKCU"},
    {kHKeyLocalMachine, "HKEY_LOCAL_MACHINE", "HKLM"},
    {kHKeyUsers, "HKEY_USERS", "HKU"},
    {kHKeyPerformanceData, "HKEY_PERFORMANCE_DATA", "HKPD"},
    {kHKeyCurrentConfig, "HKEY_CURRENT_CONFIG", "HKCC"},
    {kHKeyDynData, "HKEY_DYN_DATA", "HKDD"},
}};

} // namespace

QString RootName(std::int32_t root)
{
    for (const RootNames& r : kRoots) {
        if (r.root == root)
            return QString::fromLatin1(r.name);
    }
    return {};
}

std::optional<std::int32_t> RootFromName(const QString& name)
{
    for (const RootNames& r : kRoots) {
        if (name.compare(QLatin1String(r.name), Qt::CaseInsensitive) == 0
            || name.compare(QLatin1String(r.shortName), Qt::CaseInsensitive) == 0)
            return r.root;
    }
    return std::nullopt;
}

QByteArray TextData(const QString& text)
{
    QByteArray data;
    data.reserve((text.size() + 1) * 2);
    for (QChar c : text + QChar(u'\0')) {
        data.append(static_cast<char>(c.unicode() & 0xff));
        data.append(static_cast<char>(c.unicode() >> 8));
    }
    return data;
}

QString DataText(const QByteArray& data)
{
    QString text;
    text.reserve(data.size() / 2);
    for (qsizetype i = 0; i + 1 < data.size(); i += 2)
        text.append(QChar(qFromLittleEndian<quint16>(data.constData() + i)));
    if (text.endsWith(QChar(u'\0')))
        text.chop(1);
    return text;
}

QByteArray DwordData(std::uint32_t value)
{
    QByteArray data(4, '\0');
    qToLittleEndian<quint32>(value, data.data());
    return data;
}

std::uint32_t DataDword(const QByteArray& data)
{
    QByteArray four = data.left(4);
    four.append(4 - four.size(), '\0');
    return qFromLittleEndian<quint32>(four.constData());
}

std::uint32_t DwordNumber(const RegistryValue& value)
{
    const std::uint32_t stored = DataDword(value.data);
    return value.type == kRegDwordBigEndian ? qbswap(stored) : stored;
}

std::optional<std::uint32_t> DwordBits(qlonglong number)
{
    if (number < std::numeric_limits<std::int32_t>::min()
        || number > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(number);
}

RegistryValue DwordValue(std::int32_t type, std::uint32_t number)
{
    return {type, DwordData(type == kRegDwordBigEndian ? qbswap(number) : number)};
}

std::shared_ptr<RegistryBackend> DefaultRegistryBackend()
{
#ifdef _WIN32
    return std::make_shared<WinRegistryBackend>();
#else
    return std::make_shared<FileRegistryHive>(FileRegistryHive::DefaultFolder());
#endif
}

} // namespace registry
