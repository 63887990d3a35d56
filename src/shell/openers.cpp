#include "shell/openers.h"

#include "browser/frmUniversalGrid.h"
#include "core/navigation.h"
#include "entry/frmExpense.h"
#include "entry/frmRevenue.h"
#include "family/frmMembers.h"
#include "platform/ui/screen.h"
#include "statements/frmReports.h"
#include "users/frmChangePassword.h"
#include "users/frmChanges.h"
#include "users/frmUsers.h"
#include "utilities/frmAbout.h"
#include "utilities/frmDateConversion.h"
#include "utilities/guide_window.h"

void installOpeners()
{
    navigation.showMembers = [] { theScreen<frmMembers>().showModeless(); };
    navigation.showUsers = [] { theScreen<frmUsers>().showModeless(); };
    navigation.showChangePassword = [] { (new frmChangePassword)->showModeless(); };
    navigation.showChanges = [] { theScreen<frmChanges>().showModeless(); };
    navigation.showReports = [] { theScreen<frmReports>().showModeless(); };
    navigation.showAbout = [] { theScreen<frmAbout>().showModeless(); };
    navigation.showDateConversion = [] { theScreen<frmDateConversion>().showModeless(); };
    navigation.newBrowser = [] { return new frmUniversalGrid; };
    navigation.showExpense = [] { (new frmExpense)->showModal(); };
    navigation.showRevenue = [] { (new frmRevenue)->showModal(); };
    navigation.showRevenueBeside = [] { theScreen<frmRevenue>().showModeless(); };
    Screen::setHelp(showGuide);
}
