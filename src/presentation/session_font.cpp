#include "presentation/session_font.h"

#include "core/engine.h"
#include "platform/runtime/numbers.h"

FontChoice chooseSessionFont()
{
    FontChoice chosen =
        askFont({engine.userFontName, engine.userFontSize, engine.userFontBold, engine.userFontColor});
    engine.userFontName = chosen.name;
    engine.userFontSize = toInteger(static_cast<double>(chosen.size));
    engine.userFontBold = chosen.bold;
    engine.userFontColor = chosen.color;
    return chosen;
}
