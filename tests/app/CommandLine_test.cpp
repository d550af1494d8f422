// The options of the command line.
#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

StartRequest parse(const QStringList &options)
{
    return parseCommandLine(QStringList{QStringLiteral("velmora")} + options);
}

TEST(CommandLine, WithoutOptionsRunsWithWindows)
{
    const auto run = std::get<RunRequest>(parse({}));
    EXPECT_FALSE(run.headless);
    EXPECT_TRUE(run.programFolder.isEmpty());
    EXPECT_FALSE(run.passes);
}

TEST(CommandLine, TakesTheProgramFolder)
{
    EXPECT_EQ(
        std::get<RunRequest>(parse({QStringLiteral("--program-folder"), QStringLiteral("/a b")}))
            .programFolder,
        QStringLiteral("/a b"));
    EXPECT_EQ(std::get<RunRequest>(parse({QStringLiteral("--program-folder=/x")})).programFolder,
              QStringLiteral("/x"));
}

TEST(CommandLine, TakesCaptureAndPasses)
{
    const auto run = std::get<RunRequest>(
        parse({QStringLiteral("--capture"), QStringLiteral("--passes"), QStringLiteral("3")}));
    EXPECT_TRUE(run.headless);
    EXPECT_EQ(run.passes, 3);
}

TEST(CommandLine, HelpNamesEveryOption)
{
    const QString text = std::get<PrintRequest>(parse({QStringLiteral("--help")})).text;
    EXPECT_FALSE(text.contains(QStringLiteral("executable_name")));
    for (const char *const option :
         {"--program-folder", "--capture", "--passes", "--help", "--version"}) {
        EXPECT_TRUE(text.contains(QLatin1String(option))) << option;
    }
}

TEST(CommandLine, VersionNamesTheProgram)
{
    EXPECT_TRUE(std::get<PrintRequest>(parse({QStringLiteral("--version")}))
                    .text.startsWith(QStringLiteral("Velmora ")));
}

TEST(CommandLine, LeavesTheToolkitItsOptions)
{
    const auto run =
        std::get<RunRequest>(parse({QStringLiteral("-platform"), QStringLiteral("offscreen"),
                                    QStringLiteral("--program-folder"), QStringLiteral("/x"),
                                    QStringLiteral("-style"), QStringLiteral("fusion")}));
    EXPECT_EQ(run.programFolder, QStringLiteral("/x"));
    EXPECT_FALSE(run.headless);
}

TEST(CommandLine, RefusesWhatItDoesNotKnow)
{
    const QList<QStringList> wrong{{QStringLiteral("--bogus")},
                                   {QStringLiteral("-bogus")},
                                   {QStringLiteral("file")},
                                   {QStringLiteral("--program-folder")},
                                   {QStringLiteral("--program-folder=")},
                                   {QStringLiteral("--capture"), QStringLiteral("--passes=0")},
                                   {QStringLiteral("--capture"), QStringLiteral("--passes=-1")},
                                   {QStringLiteral("--capture"), QStringLiteral("--passes=abc")},
                                   {QStringLiteral("--passes=2")}};
    for (const QStringList &options : wrong) {
        SCOPED_TRACE(options.join(u' ').toStdString());
        ASSERT_TRUE(std::holds_alternative<UsageError>(parse(options)));
        EXPECT_TRUE(std::get<UsageError>(parse(options)).text.contains(QStringLiteral("--help")));
    }
}

} // namespace
} // namespace velmora
