// Takes pictures of the manager. Each picture has a process of its own, because the scale and much of a
// window system's state are fixed when a program starts.

#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QTemporaryDir>

#include "screenshots/PlayScene.h"

namespace {

using namespace screenshots;
namespace fs = std::filesystem;

constexpr char usage[] = "usage: screenshots [--drive | --only NAME]... FOLDER\n"
                         "Writes pictures of the Audio Plug-In Manager into the folder.\n"
                         "  --drive      scan, find, switch one off and confirm, as a user does\n"
                         "  --only NAME  this picture; NAME@1.5 takes it at that scale\n";

fs::path PathOf(const QString& text)
{
    return fs::path(text.toStdU16String());
}

const QString platformVariable = QStringLiteral("QT_QPA_PLATFORM"), offscreen = QStringLiteral("offscreen");

/// Takes one picture in this process. The arguments are: --play NAME SCENE-FOLDERS FOLDER.
int PlayInThisProcess(const std::vector<QString>& arguments)
{
    const Scene scene = FindScene(arguments[1].toStdString());
    PlayScene(scene, SceneFolders(PathOf(arguments[2])), PathOf(arguments[3]));
    return 0;
}

/// The home of the user of the scenes. Pictures show its path, which is always the same, except where another
/// process is taking pictures. It goes when the pictures are taken.
class SceneHome
{
  public:
    SceneHome() : inUse(path + QStringLiteral(".lock"))
    {
        inUse.setStaleLockTime(0);
        if (!inUse.tryLock())
            path = other.path();
        fs::remove_all(PathOf(path));
        fs::create_directories(PathOf(path));
    }
    ~SceneHome()
    {
        std::error_code ignored;
        fs::remove_all(PathOf(path), ignored);
    }
    SceneHome(const SceneHome&) = delete;
    SceneHome& operator=(const SceneHome&) = delete;

    const QString& Path() const { return path; }

  private:
    QString path = QDir::tempPath() + QStringLiteral("/Studio");
    QLockFile inUse;
    QTemporaryDir other;
};

bool PlayInChildProcess(const std::string& name, const QString& sceneFolders, const QString& folder)
{
    const Scene scene = FindScene(name);
    std::ofstream(PathOf(sceneFolders) / "screen.json")
        << R"({"screens": [{"name": "one", "x": 0, "y": 0, "width": )" << scene.screen.width()
        << R"(, "height": )" << scene.screen.height() << "}]}";
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromStdString(scene.scale));
    if (environment.value(platformVariable) == offscreen)
        environment.insert(platformVariable, offscreen + QStringLiteral(":configfile=") + sceneFolders +
                                                 QStringLiteral("/screen.json"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--play"), QString::fromStdString(name), sceneFolders, folder});
    process.waitForFinished(-1);
    const bool fine = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 &&
                      process.error() == QProcess::UnknownError;
    if (!fine)
        std::fprintf(stderr, "screenshots: %s failed\n", name.c_str());
    return fine;
}

int TakePictures(const std::vector<QString>& arguments)
{
    std::vector<std::string> names;
    QString folder;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        if (arguments[index] == u"--drive")
            names.emplace_back("drive");
        else if (arguments[index] == u"--only" && index + 1 < arguments.size())
            names.push_back(FindScene(arguments[++index].toStdString()).name);
        else if (folder.isEmpty() && !arguments[index].startsWith(u'-'))
            folder = arguments[index];
        else
            return std::fputs(usage, stderr), 2;
    }
    if (folder.isEmpty())
        return std::fputs(usage, stderr), 2;
    if (names.empty())
        for (const Scene& scene : AllScenes())
            names.push_back(scene.name);
    fs::create_directories(PathOf(folder));

    const SceneHome sceneFolders;
    qputenv("HOME", QFile::encodeName(sceneFolders.Path()));
    bool needsScan = false;
    for (const std::string& name : names)
        needsScan = needsScan || FindScene(name).content == Content::Plugins;
    SceneFolders(PathOf(sceneFolders.Path())).Build(needsScan);
    bool fine = true;
    for (const std::string& name : names)
        fine = PlayInChildProcess(name, sceneFolders.Path(), folder) && fine;
    return fine ? 0 : 1;
}

} // namespace

int main(int argumentCount, char** argumentTexts)
{
    const bool plays = argumentCount == 5 && std::strcmp(argumentTexts[1], "--play") == 0;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    try {
        const QApplication application(argumentCount, argumentTexts);
        const QStringList texts = QCoreApplication::arguments();
        const std::vector<QString> arguments(texts.begin() + 1, texts.end());
        return plays ? PlayInThisProcess(arguments) : TakePictures(arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "screenshots: %s\n", error.what());
        return 1;
    }
}
