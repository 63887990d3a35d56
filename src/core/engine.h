#pragma once

#include "platform/database/connection.h"
#include "platform/database/recordset.h"

#include <QtCore/QDateTime>
#include <QtCore/QPointer>
#include <QtCore/QString>

#include <optional>

class Screen;

/// The state that all screens share. One user, one thread: plain variables, written without locks.
struct Engine {
    ConnectionPtr dbConnection; ///< the one open connection to the store in use
    RecordsetPtr rsShared;      ///< scratch; each user assigns a new one and closes it in the same routine
    QString strSql;             ///< scratch text of the statement being built

    QString storeFilePath;    ///< the real store
    QString activeStorePath;  ///< given to compaction and part of connectionString
    QString testStorePath;    ///< the tutorial's store
    QString compactTempPath;  ///< compaction's target
    QString connectionString; ///< of the real store, also during a tutorial
    QString testConnectionString;
    QString storePassword;
    QDateTime lastCompacted;
    bool compactSucceeded = false;
    QDateTime stampNow; ///< scratch date and time of a stamp about to be written

    QString currentUser;
    // Every comparison with an empty rank is False.
    std::optional<qint32> userRank;
    std::optional<qint32> topUserRank; ///< empty until frmNewUser has confirmed
    bool masterUserEntry = false;      ///< nothing sets it; that is meant

    bool isArabic = false;
    QString languageSuffix; ///< "ar" or "en"; empty until the first screen is prepared
    QString textAreYouSure;
    QString textSaveChanges;
    QString noticeText;
    QString deceasedName;
    QString browseTable;

    QString userFontName;
    qint16 userFontSize = 0;
    bool userFontBold = false;
    qint32 userFontColor = 0; ///< 0xBBGGRR

    bool tutorialMode = false;
    QPointer<Screen> mainScreen;

    // Where the program stands; found by locateProgram().
    QString appPath; ///< folder of the store, without a separator at its end
    QString exeName; ///< base name of the executable
    QString keyFile; ///< the ini file that stands for the machine-wide key
};

extern Engine engine;
