#include "platform/ui/application.h"
#include "support/screens.h"

#include <gmock/gmock.h>

namespace
{
class TestLife : public testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo &) override { support::beginTest(); }
    void OnTestEnd(const testing::TestInfo &) override { support::endTest(); }
};
} // namespace

/// The main function of the tests that need the application: link tests_support.
int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new TestLife);
    return RUN_ALL_TESTS();
}
