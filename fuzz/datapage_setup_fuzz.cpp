// Any Data Page values in a part's machine setup open the Data Page without a
// crash. OK either refuses and leaves the part as it was, or writes values
// that are a fixed point: the Data Page opened again on what OK wrote shows
// values that OK accepts, and its OK leaves the whole part as it was (a
// polygon stock's outline is drawn again in place of the one before).
#include "DataPageFixture.h"
#include "OffscreenApplication.h"
#include "datapage/DataPageSettings.h"
#include "feldra/DocumentFile.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace {

// A value OK accepts, or (when the input says so) any number.
double Number(FuzzedDataProvider& in, double accepted = 1)
{
    if (!in.ConsumeBool())
        return accepted;
    switch (in.ConsumeIntegralInRange(0, 7)) {
    case 0:
        return std::numeric_limits<double>::quiet_NaN();
    case 1:
        return in.ConsumeBool() ? HUGE_VAL : -HUGE_VAL;
    case 2:
        return in.ConsumeFloatingPoint<double>();
    case 3:
        return in.ConsumeIntegralInRange(-40000, 40000);
    case 4:
        return in.ConsumeIntegralInRange(0, 3000) / 100.0;
    default:
        return in.ConsumeIntegralInRange(0, 30);
    }
}

QString Text(FuzzedDataProvider& in)
{
    return in.ConsumeBool() ? QString::fromStdString(in.ConsumeRandomLengthString(40)) : QString();
}

QString MachineCode(FuzzedDataProvider& in)
{
    return in.ConsumeBool() ? Text(in) : QString::number(in.ConsumeIntegralInRange(-2, 40));
}

bool ClickOk(DataPageFixture& f)
{
    f.Control<QAbstractButton>(QStringLiteral("cmdOK")).click();
    return !f.form->isVisible();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    StartOffscreenApplication(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider in(data, size);
    DataPageFixture f(in.ConsumeBool() ? 70 : 71);
    feldra::MachineSetupData& s = f.Setup();
    s.makerTag = QStringLiteral("MARELON");
    s.machineCode = MachineCode(in);
    // Without input every value is one OK accepts (as on a part the Data Page wrote).
    const QMap<int, double> accepted{{813, 20}, {817, 100}, {819, 3}, {822, 0.002}, {824, 0}};
    for (const marelon::DataPageField& field : marelon::DataPageFields())
        if (field.parameter != 0)
            s.params[field.parameter] = Number(in, accepted.value(field.parameter, 1));
    s.stockDiameter = Number(in, 12);
    s.stockInsideDiameter = Number(in, 0);
    s.stockLength = Number(in, 40);
    s.partLength = Number(in, 30);
    s.stockCode = in.ConsumeBool() ? Text(in) : QString::number(in.ConsumeIntegralInRange(0, 99999));
    s.programName = Text(in);
    s.programNumber = in.ConsumeBool() ? in.ConsumeIntegral<int>() : 1000;
    s.faceAmount = Number(in, 0);
    s.startupSpindleSpeed = Number(in, 1000);
    s.barLoaderDwell = Number(in);
    s.barLoaderType = Number(in, 0);
    s.toolBreakageDetection = Number(in, 0);
    s.backSpindleExtension = Text(in);
    s.barLoaderSubProgram = Text(in);
    s.barLoaderCommand = Text(in);

    f.Open();
    const QByteArray opened = feldra::WriteDocument(f.document->data);
    if (!ClickOk(f)) {
        if (feldra::WriteDocument(f.document->data) != opened)
            std::abort(); // a refused OK wrote something
        return 0;
    }
    const QByteArray first = feldra::WriteDocument(f.document->data);

    f.form.reset();
    f.form = std::make_unique<marelon::frmMarelonDataPage>(f.application);
    f.Open();
    if (!ClickOk(f))
        std::abort(); // what OK wrote does not pass OK's checks when opened again
    if (feldra::WriteDocument(f.document->data) != first)
        std::abort(); // not a fixed point
    return 0;
}
