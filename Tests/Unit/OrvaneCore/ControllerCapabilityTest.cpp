#include "OrvaneCore/Capability/ControllerCapability.h"
#include "Fakes/FakePlatform.h"
#include "Fakes/RecordingCapability.h"
#include "OrvaneCore/Base/Pool.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

struct Lamp {
    std::shared_ptr<QStringList> journal;
    int presses = 0;

    void press() { ++presses; }
    void start() { journal->append(QStringLiteral("start lamp")); }
    void stop() { journal->append(QStringLiteral("stop lamp")); }
};

/// A controller without anything that runs.
struct Bell {
    int rings = 0;
};

template <class Controller>
class TestCapability : public ControllerCapability<Controller> {
public:
    using ControllerCapability<Controller>::controller;
    using ControllerCapability<Controller>::withController;
    using typename ControllerCapability<Controller>::Services;

    [[nodiscard]] const CapabilityMetadata& classMetadata() const override
    {
        static const CapabilityMetadata metadata{
            {QStringLiteral("test")}, QStringLiteral("Test"), {}, {}, CapabilityCategory::system};
        return metadata;
    }

    std::shared_ptr<QStringList> journal = std::make_shared<QStringList>();
    std::optional<Services> services;
    int made = 0;
    std::shared_ptr<Controller> ofPane;

private:
    std::shared_ptr<Controller> makeController(const CapabilityContext&) override
    {
        ++made;
        auto fresh = std::make_shared<Controller>();
        if constexpr (requires { fresh->journal; })
            fresh->journal = journal;
        return fresh;
    }
    AnyView makePane(const std::shared_ptr<Controller>& shown) override
    {
        ofPane = shown;
        return {};
    }
    Services makeServices(const std::shared_ptr<Controller>& served) override
    {
        return services ? *services : ControllerCapability<Controller>::makeServices(served);
    }
};

struct ControllerCapabilityTest : testing::Test {
    void activate() { awaited(lamp->activate(context)); }
    void deactivate()
    {
        awaited(lamp->deactivate());
        context.serviceHost->stopAll();
    }
    /// None of them suspends here.
    void awaited(Task<> task)
    {
        EXPECT_TRUE(task.isReady());
        [](Task<> done) -> UnownedTask { co_await done; }(std::move(task));
    }
    std::shared_ptr<RecordingService> service(const char* name)
    {
        return std::make_shared<RecordingService>(QLatin1String(name), lamp->journal);
    }
    [[nodiscard]] int stored() const { return static_cast<int>(fake.defaults.stored.size()); }

    FakePlatform fake;
    CapabilityContext context{.id = {QStringLiteral("test")},
                              .preferences = ScopedPreferences(fake.defaults, QStringLiteral("test")),
                              .permissions = nullptr,
                              .serviceHost = std::make_shared<ServiceHost>(),
                              .eventTap = nullptr,
                              .logger = Log::make(QStringLiteral("test")),
                              .appInfo = {}};
    std::shared_ptr<TestCapability<Lamp>> lamp = std::make_shared<TestCapability<Lamp>>();
};

} // namespace

TEST_F(ControllerCapabilityTest, TheControllerIsMadeOnceForThePaneAndTheActivation)
{
    EXPECT_EQ(lamp->controller(), nullptr);
    lamp->makeSettingsPane(context);
    EXPECT_TRUE(lamp->journal->isEmpty()) << "a pane starts nothing";
    activate();
    lamp->makeSettingsPane(context);
    EXPECT_EQ(lamp->made, 1);
    EXPECT_EQ(lamp->ofPane, lamp->controller());
}

TEST_F(ControllerCapabilityTest, AControllerThatStartsAndStopsIsItsOwnService)
{
    activate();
    EXPECT_EQ(context.serviceHost->runningCount(), 1);
    deactivate();
    EXPECT_EQ(*lamp->journal, (QStringList{QStringLiteral("start lamp"), QStringLiteral("stop lamp")}));
    EXPECT_NE(lamp->controller(), nullptr) << "its pane may still be open";
}

TEST_F(ControllerCapabilityTest, AControllerWithoutAStartHasNoService)
{
    const auto bell = std::make_shared<TestCapability<Bell>>();
    awaited(bell->activate(context));
    EXPECT_NE(bell->controller(), nullptr);
    EXPECT_EQ(context.serviceHost->runningCount(), 0);
    awaited(bell->deactivate());
}

TEST_F(ControllerCapabilityTest, SeveralServicesStopInTheReverseOrderOfTheirStart)
{
    lamp->services = {service("a"), service("b")};
    activate();
    awaited(lamp->deactivate());
    const QStringList expected{QStringLiteral("start a"), QStringLiteral("start b"), QStringLiteral("stop b"),
                               QStringLiteral("stop a")};
    EXPECT_EQ(*lamp->journal, expected);
}

TEST_F(ControllerCapabilityTest, AServiceThatCannotStartFailsTheActivationAndKeepsTheOnesBeforeIt)
{
    const auto failing = service("b");
    failing->error = QStringLiteral("no lamp oil");
    const auto first = service("a");
    lamp->services = {first, failing, service("c")};
    QString text;
    [](TestCapability<Lamp>& capability, CapabilityContext with, QString& error) -> UnownedTask {
        try {
            co_await capability.activate(with);
        } catch (const std::runtime_error& thrown) {
            error = QString::fromUtf8(thrown.what());
        }
    }(*lamp, context, text);
    EXPECT_EQ(text, QStringLiteral("no lamp oil"));
    EXPECT_EQ(*lamp->journal, (QStringList{QStringLiteral("start a"), QStringLiteral("start b")}));
    EXPECT_TRUE(first->isRunning());
    awaited(lamp->deactivate());
    EXPECT_FALSE(first->isRunning());
    EXPECT_EQ(lamp->journal->last(), QStringLiteral("stop a"));
}

TEST_F(ControllerCapabilityTest, UninstallingRemovesThePreferencesAndTheController)
{
    context.preferences.set(1, QStringLiteral("key"));
    lamp->makeSettingsPane(context);
    awaited(lamp->uninstall(context));
    EXPECT_EQ(lamp->controller(), nullptr);
    EXPECT_EQ(stored(), 0);
    lamp->makeSettingsPane(context);
    EXPECT_EQ(lamp->made, 2);
}

TEST_F(ControllerCapabilityTest, AHandlerDoesNothingBeforeTheControllerAndAfterTheCapability)
{
    const auto press = lamp->withController(&Lamp::press);
    press();
    EXPECT_EQ(lamp->made, 0);
    activate();
    press();
    const auto controller = lamp->controller();
    EXPECT_EQ(controller->presses, 1);
    lamp.reset();
    press();
    EXPECT_EQ(controller->presses, 1);
}

TEST_F(ControllerCapabilityTest, AHandlerKeepsTheControllerWhileItRuns)
{
    activate();
    const auto uninstall = lamp->withController([this](Lamp& controller) {
        awaited(lamp->uninstall(context));
        controller.press(); // the sanitizer sees a controller that is gone
    });
    uninstall();
    EXPECT_EQ(lamp->controller(), nullptr);
}

} // namespace orvane::tests
