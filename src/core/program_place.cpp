#include "core/program_place.h"

#include "core/engine.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

struct Place {
    QString folder;
    QString exeName;
    QString keyFile;
};
Place chosenPlace;

Place realPlace()
{
    const QFileInfo executable(QCoreApplication::applicationFilePath());
    return {folderOfStores(executable.absolutePath()), executable.completeBaseName(),
            QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/quvana.ini"_s};
}

/// The ini entry that stands for the value `dbpath` of a key.
QString entryOf(QString keyPath)
{
    return keyPath.replace(u'\\', u'/') + u"/dbpath"_s;
}

} // namespace

QString folderOfStores(const QString &programFolder)
{
    const bool installed = QFileInfo::exists(programFolder + u"/../share/applications/quvana.desktop"_s);
    if (!installed && QFileInfo(programFolder).isWritable())
        return programFolder;
    QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/quvana"_s;
    QDir().mkpath(folder);
    return folder;
}

void setProgramPlace(const QString &folder, const QString &exeName, const QString &keyFile)
{
    chosenPlace = {folder, exeName, keyFile};
}

void locateProgram()
{
    const Place place = chosenPlace.folder.isEmpty() ? realPlace() : chosenPlace;
    engine.appPath = place.folder;
    engine.exeName = place.exeName;
    engine.keyFile = place.keyFile;
}

bool KeyExists(const QString &keyPath)
{
    if (!QFileInfo(engine.keyFile).isWritable())
        return false;
    return QSettings(engine.keyFile, QSettings::IniFormat).contains(entryOf(keyPath));
}

void CreateProgramKey(const QString &keyPath)
{
    QSettings settings(engine.keyFile, QSettings::IniFormat);
    settings.setValue(entryOf(keyPath), engine.storeFilePath);
    settings.sync();
}

QString operatingSystemUser()
{
    if (const passwd *entry = getpwuid(geteuid()); entry != nullptr)
        return QString::fromLocal8Bit(entry->pw_name);
    return qEnvironmentVariable("USER");
}
