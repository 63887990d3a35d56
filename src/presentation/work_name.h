#pragma once

#include "core/engine.h"

/// The works that tell how far they are when they take long.
enum class Work { Reading, Fitting, Saving, Waiting };

/// What such a work is called in the session's language.
inline QString workName(Work work)
{
    const auto name = [](const char16_t *english, const char16_t *arabic) {
        return QString::fromUtf16(engine.isArabic ? arabic : english);
    };
    switch (work) {
    case Work::Reading:
        return name(u"Reading rows", u"قراءة السجلات");
    case Work::Fitting:
        return name(u"Fitting columns", u"تنسيق الأعمده");
    case Work::Saving:
        return name(u"Saving rows", u"حفظ السجلات");
    case Work::Waiting:
        break;
    }
    return name(u"Please wait", u"فضلاً انتظر");
}
