#include "utilities/program_description.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString blankLine(68, u' ');

const QStringList &briefEnglish()
{
    static const QStringList lines{
        u"             ***          Brief Description        ***            "_s,
        u"This program was designed to enable the user(s) to keep records of "_s,
        u"revenue/expense transactions for a family inheritance.             "_s,
        u"It is designed with security in mind.  Only authorized users can use"_s,
        u"its functions and auditing is performed for all modifications.     "_s,
        u"Reporting and exporting to Excell is also available.               "_s,
        blankLine,
        u"In order to be able to know all the functions of the program, you will"_s,
        u"need to spend some time to get familiar with it.                    "_s,
        blankLine,
        u"The property of orphans is a trust.  This program was made so that"_s,
        u"every amount that comes in and every amount that goes out is written"_s,
        u"down with the share of each heir, and so that no one can use up the"_s,
        u"funds of orphans wrongly, or change what was written, without leaving"_s,
        u"a trace of it."_s,
        blankLine,
        u"Questions, suggestions and reports of errors are welcome.  Please"_s,
        u"take them to the person who installed the program for you, who"_s,
        u"passes them on to its author; tell what you did, what you expected"_s,
        u"and what you saw, with the words of any message."_s,
    };
    return lines;
}

const QStringList &briefArabic()
{
    static const QStringList lines{
        u"                 ***          شرح موجز          ***                "_s,
        u" يقوم البرنامج بتمكينك من تسجيل جميع العمليات الماليه من دخل أو إنفاق "_s,
        u" مع إمكانية الطباعه والتصدير بالتفصيل لكل فرد من أفراد العائله وللإرث كله"_s,
        blankLine,
        u" لكي تصبح قادراً على إستخدامه بصورة جيده وأن تتعرف بشكل مباشر على ما"_s,
        u" تستطيع القيام به بواسطته, يتوجب عليك التدرًب الشخصي على المزايا    "_s,
        u" اللتي يحتوي عليها بنفسك و محاولة فهم طريقة إستخدامه مع مرور الوقت.  "_s,
        blankLine,
        u" إن مال اليتيم أمانه, والهدف من هذا البرنامج هو منع إساءة إستخدام"_s,
        u" أموال الأيتام: فكل مبلغ يدخل أو يخرج يُسجَل مع نصيب كل وارث منه,"_s,
        u" ويبقى لكل تعديل أو إلغاء أثر يدل على من قام به ومتى قام به,"_s,
        u" فيستطيع كل فرد من أفراد العائله أن يراجع حسابه في أي وقت يشاء,"_s,
        u" ويستطيع وكيل العائله أن يبرئ ذمته أمام الله ثم أمام الورثه."_s,
        u" والله نسأل أن يجعله عوناً على حفظ الحقوق وأدائها إلى أهلها."_s,
        blankLine,
        u" نرحب بأسئلتكم وإقتراحاتكم وبالتبليغ عن الأخطاء. فضلاً أوصلوها إلى"_s,
        u" الشخص الذي ركَب لكم البرنامج, وهو يوصلها إلى مؤلفه. وعند التبليغ عن"_s,
        u" خطأ نرجو ذكر ما قمتم به, وما كنتم تتوقعونه, وما ظهر لكم على الشاشه,"_s,
        u" مع نص الرساله إن ظهرت رساله."_s,
        blankLine,
    };
    return lines;
}

const QStringList &longEnglish()
{
    static const QStringList lines{
        u"             ***          Brief Description        ***            "_s,
        blankLine,
        u"The program records the financial operations of one heir or of several heirs:"_s,
        u"expenses or revenues of their own, or of the estate as a whole. A revenue is"_s,
        u"divided by the Islamic shares of wives, sons and daughters, an expense equally"_s,
        u"among the members that are chosen."_s,
        blankLine,
        u"It issues a statement by dates and names for any period: of one member, in"_s,
        u"detail or by month, or of the whole family. Statements can be printed, and"_s,
        u"exported to Excel."_s,
        blankLine,
        u"A store that grows stays fast: the operations of a past period can be moved to"_s,
        u"an archive, looked at there, and brought back whenever they are needed."_s,
        blankLine,
        u"All operations and changes are logged with the name of the user and the time,"_s,
        u"and only authorized users can reach them, each by his rank. So the store is kept"_s,
        u"safe from tampering, and what was entered can always be compared with what it"_s,
        u"became."_s,
        blankLine,
        u"In order to be able to know all the functions of the program, you will"_s,
        u"need to spend some time to get familiar with it.                    "_s,
    };
    return lines;
}

const QStringList &longArabic()
{
    static const QStringList lines{
        u"                 ***          شرح موجز          ***                "_s,
        blankLine,
        u" يقوم البرنامج بتسجيل العمليات الماليه لوارث واحد أو لعدة ورثه, سواءً كانت"_s,
        u" مصاريف أو عوائد خاصه بهم أو بالإرث نفسه. وتُقسَم العوائد على الزوجات والأبناء"_s,
        u" والبنات حسب الشرع, وتُقسَم المصاريف بالتساوي على من يتم إختيارهم من الأفراد."_s,
        blankLine,
        u" ويُصدر البرنامج كشف حساب حسب التواريخ والأسماء لأي فتره: لفرد واحد, تفصيلياً"_s,
        u" أو شهرياً, أو كشفاً عاماً للعائله كلها. ويمكن طباعة الكشوفات وتصديرها إلى"_s,
        u" برنامج إكسل (Excel)."_s,
        blankLine,
        u" ولكي يبقى البرنامج سريعاً كلما كبرت قاعدة البيانات يمكن أرشفة عمليات أي فتره"_s,
        u" ماضيه, ومشاهدتها في الأرشيف, ودمجها من جديد عند الحاجه إليها."_s,
        blankLine,
        u" ويحتفظ البرنامج بسجل لجميع العمليات والتعديلات بإسم المستخدم وتاريخ التحديث,"_s,
        u" ولا يصل إليها إلا من لديه الصلاحيات, وذلك لحماية المعلومات من العبث,"_s,
        u" ولتكون المقارنه بين ما أُدخل في البدايه وما أصبح عليه ممكنةً دائماً."_s,
        blankLine,
        u" لكي تصبح قادراً على إستخدامه بصورة جيده وأن تتعرف بشكل مباشر على ما"_s,
        u" تستطيع القيام به بواسطته, يتوجب عليك التدرًب الشخصي على المزايا    "_s,
        u" اللتي يحتوي عليها بنفسك و محاولة فهم طريقة إستخدامه مع مرور الوقت.  "_s,
    };
    return lines;
}

} // namespace

QStringList briefDescription(bool arabic)
{
    return arabic ? briefArabic() : briefEnglish();
}

QStringList longDescription(bool arabic)
{
    return arabic ? longArabic() : longEnglish();
}
