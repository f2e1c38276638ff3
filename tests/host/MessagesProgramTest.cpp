#include "host/SingleInstance.h"
#include "host/Waiting.h"
#include "host/WindowState.h"
#include "platform/foundation/UserDefaults.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QProcess>

#include <csignal>

namespace exifcard {
namespace {

using testing::HasSubstr;

const QString kProgram = QStringLiteral(EXIFCARD_BINARY_DIR "/exifcard-messages");
const QString kPhoto = QStringLiteral(EXIFCARD_TEST_DATA "/canon-6d-elephants.jpg");

struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;
};

Outcome run(const QStringList& arguments,
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment()) {
    QProcess program;
    environment.remove(QStringLiteral("XDG_RUNTIME_DIR")); // As on a machine that nobody is logged in to.
    program.setProcessEnvironment(environment);
    program.start(kProgram, arguments);
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

TEST(MessagesProgramTest, EndsWithOneLineWhereTheDisplayCannotBeOpened) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.remove(QStringLiteral("XDG_SESSION_TYPE"));
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":9876"));
    const Outcome outcome = run({}, environment);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("could not connect to display :9876"));
    EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1);
}

/// A window off screen, which answers.
class RunningProgramTest : public testing::Test {
protected:
    RunningProgramTest() {
        PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Denied); // It asks nothing.
    }
    ~RunningProgramTest() override {
        _program.kill();
        _program.waitForFinished();
    }
    void start(const QStringList& arguments) {
        _program.start(kProgram, arguments);
        ASSERT_TRUE(_program.waitForStarted());
        expectSoon([] { return SingleInstance().handOver({QString(), QString()}); });
    }
    void send(int signal) const { ASSERT_EQ(::kill(static_cast<pid_t>(_program.processId()), signal), 0); }

    const TemporaryHome _home;
    QProcess _program;
};

TEST_F(RunningProgramTest, ClosesItsWindowWhenTheSessionOrTheTerminalEndsIt) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const QString name = QString::number(signal);
        SCOPED_TRACE(signal);
        start({QStringLiteral("--conversation"), name});
        send(signal);
        ASSERT_TRUE(_program.waitForFinished());
        EXPECT_EQ(_program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(_program.exitCode(), 0);
        UserDefaults::standardUserDefaults()->synchronize();
        EXPECT_EQ(WindowState::load().conversation, name.toStdString());
    }
}

TEST_F(RunningProgramTest, EndsAtOnceAtASecondSignal) {
    start({});
    send(SIGSTOP); // Both wait for it.
    send(SIGTERM);
    send(SIGINT);
    send(SIGCONT);
    ASSERT_TRUE(_program.waitForFinished());
    EXPECT_EQ(_program.exitStatus(), QProcess::CrashExit);
}

} // namespace
} // namespace exifcard
