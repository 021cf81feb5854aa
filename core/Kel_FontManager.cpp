#include "Kel_FontManager.h"

#include "Ost_Setting.h"

#include <QFile>
#include <QMap>
#include <QStringList>

const char* const Kel_FontManager::kSettingsPrefix = "FontSettings";

namespace {

QMap<QString, QFont>& fontTable()
{
    static QMap<QString, QFont> table;
    return table;
}

// "family", "family,size" or "family,size,weight[,anything]"; numbers that do
// not parse count as 0. An empty value is a default font.
QFont fontFromSetting(const QString& value)
{
    const QStringList parts = value.isEmpty() ? QStringList() : value.split(QLatin1Char(','), Qt::KeepEmptyParts);
    switch (parts.size()) {
    case 0:
        return QFont();
    case 1:
        return QFont(parts.at(0), -1, -1, false);
    case 2:
        return QFont(parts.at(0), parts.at(1).toInt(), -1, false);
    default:
        return QFont(parts.at(0), parts.at(1).toInt(), parts.at(2).toInt(), false);
    }
}

} // namespace

bool Kel_FontManager::hasFont(const QString& key)
{
    return fontTable().contains(key);
}

QFont Kel_FontManager::getFont(const QString& key)
{
    QMap<QString, QFont>& table = fontTable();
    auto it = table.find(key);
    if (it == table.end())
        it = table.insert(key, QFont());
    return it.value();
}

void Kel_FontManager::setFont(const QString& key, QFont font)
{
    fontTable().insert(key, font);
}

void Kel_FontManager::loadSettingsFile(const QString& path)
{
    QString text;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        text = QString::fromUtf8(file.readAll());
        file.close();
    }

    Ost_Setting settings;
    settings.SetPrefix(QString::fromLatin1(kSettingsPrefix));
    settings.SetStartRoot(QStringLiteral("Windows"));
    settings.SetXML(text, false);

    QString name;
    QString value;
    for (int n = 0; settings.GetNthParam(n, name, value); ++n)
        setFont(name, fontFromSetting(value));
}
