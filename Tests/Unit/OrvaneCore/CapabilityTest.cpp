#include "OrvaneCore/Capability/Capability.h"
#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

/// Declares only what it must.
class PlainCapability : public Capability {
public:
    [[nodiscard]] const CapabilityMetadata& classMetadata() const override
    {
        static const CapabilityMetadata metadata{
            {QStringLiteral("plain")}, QStringLiteral("Plain"), {}, {}, CapabilityCategory::system};
        return metadata;
    }
    Task<> activate(CapabilityContext) override { co_return; }
    Task<> deactivate() override { co_return; }
    AnyView makeSettingsPane(CapabilityContext) override { return {}; }
};

class DemandingCapability : public PlainCapability {
public:
    [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override
    {
        return {{SystemPermission::screenRecording, PermissionRequirement::Level::optional},
                {SystemPermission::inputMonitoring, PermissionRequirement::Level::required},
                {SystemPermission::accessibility, PermissionRequirement::Level::optional},
                {SystemPermission::appleEvents, PermissionRequirement::Level::required}};
    }
};

CapabilityContext makeContext(FakePlatform& fake)
{
    return {.id = {QStringLiteral("plain")},
            .preferences = ScopedPreferences(fake.defaults, QStringLiteral("plain")),
            .permissions = nullptr,
            .serviceHost = std::make_shared<ServiceHost>(),
            .eventTap = nullptr,
            .logger = Log::make(QStringLiteral("plain")),
            .appInfo = {}};
}

} // namespace

TEST(Capability, OneThatDeclaresLittleNeedsAndOffersNothing)
{
    FakePlatform fake;
    PlainCapability capability;
    EXPECT_TRUE(capability.permissionRequirements().isEmpty());
    EXPECT_TRUE(capability.hotkeyActions().isEmpty());
    EXPECT_TRUE(capability.menuBarContributions().isEmpty());
    const auto install = capability.install(makeContext(fake));
    const auto uninstall = capability.uninstall(makeContext(fake));
    EXPECT_TRUE(install.isReady());
    EXPECT_TRUE(uninstall.isReady());
}

TEST(Capability, PermissionsAreListedByLevelInDeclaredOrder)
{
    const DemandingCapability capability;
    EXPECT_EQ(capability.requiredPermissions(),
              (QList{SystemPermission::inputMonitoring, SystemPermission::appleEvents}));
    EXPECT_EQ(capability.optionalPermissions(),
              (QList{SystemPermission::screenRecording, SystemPermission::accessibility}));
}

TEST(Capability, OnlyOptionalRequirementsMeanNoRequiredPermission)
{
    class OptionalOnly : public PlainCapability {
        [[nodiscard]] QList<PermissionRequirement> permissionRequirements() const override
        {
            return {{SystemPermission::accessibility, PermissionRequirement::Level::optional}};
        }
    };
    EXPECT_TRUE(OptionalOnly().requiredPermissions().isEmpty());
}

TEST(Capability, ARequirementIsIdentifiedByTheRawNameOfItsPermission)
{
    QStringList ids;
    for (const SystemPermission permission : allSystemPermissions)
        ids.append(PermissionRequirement{permission}.id());
    EXPECT_EQ(ids, (QStringList{QStringLiteral("accessibility"), QStringLiteral("inputMonitoring"),
                                QStringLiteral("screenRecording"), QStringLiteral("appleEvents")}));
}

TEST(CapabilityCategory, RawValuesAndNames)
{
    const std::vector<std::pair<QString, QString>> expected{
        {QStringLiteral("windowing"), QStringLiteral("Windows & Switching")},
        {QStringLiteral("input"), QStringLiteral("Keyboard & Mouse")},
        {QStringLiteral("desktop"), QStringLiteral("Desktop")},
        {QStringLiteral("finder"), QStringLiteral("Finder & Files")},
        {QStringLiteral("system"), QStringLiteral("System")},
    };
    std::vector<std::pair<QString, QString>> actual;
    for (const CapabilityCategory category : allCases<CapabilityCategory>()) {
        actual.emplace_back(rawValue(category), title(category));
        EXPECT_EQ(fromRawValue<CapabilityCategory>(QString(rawValue(category))), category);
    }
    EXPECT_EQ(actual, expected);
    EXPECT_EQ(fromRawValue<CapabilityCategory>(u"nonsense"), std::nullopt);
}

TEST(AppInfo, IsTakenFromTheBundleAndTheFirstSupportDirectory)
{
    FakePlatform fake;
    fake.fileManager.supportDirectories = {QStringLiteral("/home/x/.local/share"), QStringLiteral("/else")};
    fake.bundle.info[QStringLiteral("CFBundleShortVersionString")] = QStringLiteral("2.5");
    const AppInfo info = AppInfo::current({QStringLiteral("net.lindenrow.orvane.awake")});
    EXPECT_EQ(info.bundleID, QStringLiteral("net.lindenrow.orvane"));
    EXPECT_EQ(info.version, QStringLiteral("2.5"));
    EXPECT_EQ(info.supportDirectory,
              QStringLiteral("/home/x/.local/share/Orvane/net.lindenrow.orvane.awake"));
}

TEST(AppInfo, ABundleWithoutVersionOrIdentifierHasItsStandIns)
{
    FakePlatform fake;
    fake.bundle.info.clear();
    fake.bundle.bundleIdentifier.reset();
    const AppInfo info = AppInfo::current({QStringLiteral("x")});
    EXPECT_EQ(info.version, QStringLiteral("0"));
    EXPECT_EQ(info.bundleID, QStringLiteral("net.lindenrow.orvane"));
    fake.bundle.info[QStringLiteral("CFBundleShortVersionString")] = 3;
    EXPECT_EQ(AppInfo::current({QStringLiteral("x")}).version, QStringLiteral("0"));
}

TEST(AppInfoDeathTest, AUserWithoutSupportDirectoryEndsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            FakePlatform fake;
            fake.fileManager.supportDirectories.clear();
            AppInfo::current({QStringLiteral("x")});
        },
        "no application support directory");
}
