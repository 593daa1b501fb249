// The command that examines everything and cleans up.
#include "CommandLine/CommandTask.h"

#include <QLocale>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

QString sign(Severity severity) {
    switch (severity) {
    case Severity::fine:
        return u"ok      "_s;
    case Severity::warning:
        return u"warning "_s;
    case Severity::problem:
        return u"problem "_s;
    }
    Q_UNREACHABLE();
}

QString sizeText(qint64 bytes) {
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

Json examinationJson(const Examination& examination) {
    Json object = {{"severity", sign(examination.severity).trimmed().toStdString()},
                   {"subject", examination.subject.toStdString()},
                   {"text", examination.text.toStdString()}};
    if (!examination.remedy.isEmpty())
        object["remedy"] = examination.remedy.toStdString();
    if (examination.app)
        object["app"] = canonicalText(*examination.app).toStdString();
    return object;
}

Json reportJson(const DoctorReport& report, qsizetype cleaned) {
    Json examinations = Json::array();
    for (const Examination& examination : report.examinations)
        examinations.push_back(examinationJson(examination));
    Json leftovers = Json::array();
    for (const Leftover& leftover : report.leftovers)
        leftovers.push_back({{"kind", description(leftover.kind).toStdString()},
                             {"path", leftover.path.toStdString()},
                             {"bytes", leftover.bytes}});
    return {{"checks", examinations}, {"leftovers", leftovers}, {"removed", cleaned}};
}

void printReport(Console& console, const DoctorReport& report) {
    for (const Examination& examination : report.examinations) {
        console.print(printable(sign(examination.severity) + examination.subject + u": "_s + examination.text));
        if (!examination.remedy.isEmpty())
            console.print(u"          → "_s + printable(examination.remedy));
    }
    for (const Leftover& leftover : report.leftovers)
        console.print(u"leftover %1, %2: %3"_s.arg(description(leftover.kind), sizeText(leftover.bytes),
                                                   printable(leftover.path)));
}

/// What of `asked` is still there: while somebody thought about the question, an app may have come to use a part of it.
std::vector<Leftover> stillThere(Doctor& doctor, const std::vector<Leftover>& asked) {
    std::vector<Leftover> present = doctor.examine().leftovers;
    std::erase_if(present, [&asked](const Leftover& leftover) {
        return std::none_of(asked.begin(), asked.end(), [&leftover](const Leftover& other) {
            return other.kind == leftover.kind && other.path == leftover.path;
        });
    });
    return present;
}

/// Removes the leftovers and tells how many went; those that stay are named.
qsizetype cleanUp(const Task& task, Doctor& doctor, const std::vector<Leftover>& leftovers, QStringList& failures) {
    qsizetype removed = 0;
    for (const Leftover& leftover : leftovers) {
        if (const auto cleaned = doctor.clean(leftover); cleaned)
            ++removed;
        else
            failures << cleaned.error().description();
    }
    if (!task->json)
        task->console.print(u"Removed %1 of %2 leftovers"_s.arg(removed).arg(leftovers.size()));
    return removed;
}

void finish(const Task& task, const DoctorReport& report, qsizetype removed, const QStringList& failures) {
    if (task->json)
        task->console.print(QString::fromStdString(
            reportJson(report, removed).dump(2, ' ', false, Json::error_handler_t::replace)));
    if (!failures.isEmpty())
        task->fail(failures.join(u"; "_s));
    else
        task->done(report.hasProblems() ? ExitStatus::failed : ExitStatus::done);
}

void finishWithAnswer(const Task& task, Doctor& doctor, const DoctorReport& report, bool mayClean) {
    QStringList failures;
    qsizetype removed = 0;
    if (mayClean)
        removed = cleanUp(task, doctor, stillThere(doctor, report.leftovers), failures);
    else if (!report.leftovers.empty() && !task->json)
        task->console.print(u"\"wrapio doctor --clean\" removes the leftovers after a yes"_s);
    finish(task, report, removed, failures);
}

QString question(const DoctorReport& report) {
    qint64 total = 0;
    for (const Leftover& leftover : report.leftovers)
        total += leftover.bytes;
    return u"Remove these %1 leftovers (%2)?"_s.arg(report.leftovers.size()).arg(sizeText(total));
}

}  // namespace

void runDoctor(const Task& task, const DoctorCommand& command) {
    const auto catalogue =
        command.clean ? openCatalogue(task) : std::optional(task->services.catalogue.openForReading());
    if (!catalogue)
        return;
    const DoctorReport report = catalogue->doctor.examine();
    if (!task->json)
        printReport(task->console, report);
    if (!command.clean || command.yes || report.leftovers.empty()) {
        finishWithAnswer(task, catalogue->doctor, report, command.clean && !report.leftovers.empty());
        return;
    }
    task->console.confirm(question(report), [task, &doctor = catalogue->doctor, report](bool yes) {
        finishWithAnswer(task, doctor, report, yes);
    });
}

}  // namespace wrapio
