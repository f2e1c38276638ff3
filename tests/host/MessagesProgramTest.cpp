#include "host/MessagesOptions.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QProcess>

namespace exifcard {
namespace {

using testing::HasSubstr;

const QString kPhoto = QStringLiteral(EXIFCARD_TEST_DATA "/canon-6d-elephants.jpg");

struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;
};

Outcome run(const QStringList& arguments) {
    QProcess program;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("XDG_RUNTIME_DIR")); // As on a machine that nobody is logged in to.
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(EXIFCARD_BINARY_DIR "/exifcard-messages"), arguments);
    program.waitForFinished(60'000);
    return {program.exitCode(), program.readAllStandardOutput().toStdString(),
        program.readAllStandardError().toStdString()};
}

TEST(MessagesProgramTest, RefusesWrongUsageInOneLine) {
    struct Case {
        QStringList arguments;
        const char* said;
    };
    const Case cases[] = {
        {{QStringLiteral("--idiom"), QStringLiteral("watch")}, "phone or tablet"},
        {{QStringLiteral("--library"), QStringLiteral("/nowhere/at/all")}, "no such folder"},
        {{QStringLiteral("--screen"), QStringLiteral("wide")}, "390x844@3"},
        {{QStringLiteral("--colour")}, "colour"},
        {{QStringLiteral("photo.jpg")}, "--library FOLDER"},
        {{QStringLiteral("render")}, "host, expanded"},
        {{QStringLiteral("render"), QStringLiteral("moon"), kPhoto}, "there is no view moon; there are host"},
        {{QStringLiteral("render"), QStringLiteral("host"), kPhoto}, "-o PNG"},
        {{QStringLiteral("render"), QStringLiteral("host"), QStringLiteral("-o"), QStringLiteral("x.png")},
            "needs a file"},
        {{QStringLiteral("render"), QStringLiteral("empty"), QStringLiteral("-o"), QStringLiteral("x.png"),
             QStringLiteral("--scale"), QStringLiteral("90")},
            "--scale"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.arguments.join(QLatin1Char(' ')).toStdString());
        const Outcome outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.errors, HasSubstr(c.said));
        EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1);
    }
}

TEST(MessagesProgramTest, TellsItsOptionsWithExamples) {
    const Outcome outcome = run({QStringLiteral("--help")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("Examples:"));
    EXPECT_EQ(run({QStringLiteral("--version")}).status, 0);
}

TEST(MessagesProgramTest, DrawsAViewAtTheScaleAskedFor) {
    const TemporaryHome home;
    const QString file = QString::fromStdString((home.path() / "window.png").string());
    const QStringList arguments = {QStringLiteral("render"), QStringLiteral("empty"), QStringLiteral("-o"),
        file, QStringLiteral("--scale"), QStringLiteral("1"), QStringLiteral("--dark")};
    const Outcome outcome = run(arguments);
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "");
    const QImage picture(file);
    EXPECT_EQ(picture.size(), QSize(375, 812));
    EXPECT_EQ(picture.pixelColor(187, 200), QColor(Qt::black));
    EXPECT_EQ(run(arguments).status, 2); // What is there is not overwritten.
}

} // namespace
} // namespace exifcard
