#include "shell/openers.h"

#include "core/navigation.h"
#include "entry/frmRevenue.h"
#include "family/frmMembers.h"
#include "platform/ui/screen.h"
#include "users/frmChanges.h"

void installOpeners()
{
    navigation.showMembers = [] { theScreen<frmMembers>().showModeless(); };
    navigation.showChanges = [] { theScreen<frmChanges>().showModeless(); };
    navigation.showRevenue = [] { (new frmRevenue)->showModal(); };
}
