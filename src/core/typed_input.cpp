#include "core/typed_input.h"

#include "platform/runtime/runtime_error.h"
#include "platform/ui/screen.h"

void saveTypedInput()
{
    const QList<Screen *> loaded = Screen::loadedScreens();
    for (Screen *screen : loaded) {
        if (Screen::loadedScreens().contains(screen)) // an answer may have closed it
            ignoringErrors([screen] { screen->saveTyped(); });
    }
}
