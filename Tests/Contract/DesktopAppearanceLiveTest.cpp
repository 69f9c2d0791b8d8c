// The accent colour that a desktop tells over the session bus, with a stand-in for its portal.
#include "PlatformLinux/Appearance/DesktopAppearance.h"
#include "Support/Eventually.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <QGuiApplication>
#include <QMap>

#include <gtest/gtest.h>

namespace orvane::tests {

/// A colour as the portal sends it.
struct Parts {
    double red = 0;
    double green = 0;
    double blue = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Parts& parts)
{
    argument.beginStructure();
    argument << parts.red << parts.green << parts.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Parts& parts)
{
    argument.beginStructure();
    argument >> parts.red >> parts.green >> parts.blue;
    argument.endStructure();
    return argument;
}

} // namespace orvane::tests

Q_DECLARE_METATYPE(orvane::tests::Parts)

namespace orvane::tests {
namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString accentKey = QStringLiteral("accent-color");
const QString kde = QStringLiteral("org.kde.kdeglobals.General");
const QString kdeAccentKey = QStringLiteral("AccentColor");

/// Answers "Read" and tells of changes, on a connection of its own.
class StandInPortal : public QDBusVirtualObject {
public:
    StandInPortal() : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name))
    {
        qDBusRegisterMetaType<Parts>();
        m_bus.registerVirtualObject(path, this);
        EXPECT_TRUE(m_bus.registerService(service)) << "the session has a portal of its own";
    }
    ~StandInPortal() override
    {
        m_bus.unregisterService(service);
        QDBusConnection::disconnectFromBus(m_name);
    }

    void set(const QString& space, const QString& key, const QVariant& value)
    {
        m_values[space + u' ' + key] = value;
        QDBusMessage signal = QDBusMessage::createSignal(
            path, QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
        signal << space << key << QVariant::fromValue(QDBusVariant(value));
        m_bus.send(signal);
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        const QVariant value = m_values.value(message.arguments().value(0).toString() + u' ' +
                                              message.arguments().value(1).toString());
        if (value.isValid()) // an inner variant of its own, as the portal sends it
            bus.send(message.createReply(
                QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(value))))));
        else
            bus.send(message.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), {}));
        return true;
    }

private:
    const QString m_name = QStringLiteral("stand-in portal");
    QDBusConnection m_bus;
    QMap<QString, QVariant> m_values;
};

class DesktopAppearanceLiveTest : public ::testing::Test {
protected:
    ~DesktopAppearanceLiveTest() override { QGuiApplication::setPalette(m_before); }

    static QVariant color(double red, double green, double blue)
    {
        return QVariant::fromValue(Parts{red, green, blue});
    }
    static bool highlightBecomes(const QColor& color)
    {
        return eventually(10s,
                          [&] { return QGuiApplication::palette().color(QPalette::Highlight) == color; });
    }
    [[nodiscard]] QColor highlightBefore() const { return m_before.color(QPalette::Highlight); }

private:
    const QPalette m_before = QGuiApplication::palette();
};

} // namespace

TEST_F(DesktopAppearanceLiveTest, ThePortalsAccentIsAskedForAndFollowed)
{
    StandInPortal portal;
    portal.set(appearance, accentKey, color(1, 0, 0));
    const DesktopAppearance desktop;
    EXPECT_TRUE(highlightBecomes(QColor(255, 0, 0)));
    portal.set(appearance, accentKey, color(0, 1, 0));
    EXPECT_TRUE(highlightBecomes(QColor(0, 255, 0)));
    portal.set(appearance, accentKey, color(-1, -1, -1));
    EXPECT_TRUE(highlightBecomes(highlightBefore())) << "none is set any more";
}

TEST_F(DesktopAppearanceLiveTest, KdesAccentCountsWhereThePortalHasNone)
{
    StandInPortal portal;
    portal.set(kde, kdeAccentKey, QStringLiteral("10,20,30"));
    const DesktopAppearance desktop;
    EXPECT_TRUE(highlightBecomes(QColor(10, 20, 30)));
    portal.set(appearance, accentKey, color(0, 0, 1));
    EXPECT_TRUE(highlightBecomes(QColor(0, 0, 255)));
}

TEST_F(DesktopAppearanceLiveTest, APortalThatStartsLaterIsAsked)
{
    const DesktopAppearance desktop;
    StandInPortal portal;
    portal.set(kde, kdeAccentKey, QStringLiteral("10,20,30"));
    EXPECT_TRUE(highlightBecomes(QColor(10, 20, 30)));
}

TEST_F(DesktopAppearanceLiveTest, AnAccentOfAnotherTypeIsNone)
{
    StandInPortal portal;
    portal.set(kde, kdeAccentKey, QStringLiteral("10,20,30"));
    portal.set(appearance, accentKey, QStringLiteral("blue"));
    const DesktopAppearance desktop;
    EXPECT_TRUE(highlightBecomes(QColor(10, 20, 30)));
}

} // namespace orvane::tests
