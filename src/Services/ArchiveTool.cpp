#include "Services/ArchiveTool.h"

#include "Services/CollectionExportError.h"
#include "Services/ToolOutput.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using MakeError = CollectionExportError (*)(const QString&);

tl::expected<void, AnyError> runDitto(ToolRunner& tools, const QStringList& arguments, MakeError makeError) {
    const auto result = tools.run(u"/usr/bin/ditto"_s, arguments);
    if (!result)
        return tl::unexpected(AnyError(result.error()));
    if (result->status != 0)
        return tl::unexpected(AnyError(makeError(decodedUtf8(result->standardError).value_or(u"unknown error"_s))));
    return {};
}

}  // namespace

tl::expected<void, AnyError> packArchive(ToolRunner& tools, const QString& folder, const QString& archive) {
    return runDitto(tools, {u"-c"_s, u"-k"_s, u"--sequesterRsrc"_s, folder, archive},
                    &CollectionExportError::archiveFailed);
}

tl::expected<void, AnyError> unpackArchive(ToolRunner& tools, const QString& archive, const QString& folder) {
    return runDitto(tools, {u"-x"_s, u"-k"_s, archive, folder}, &CollectionExportError::extractFailed);
}

}  // namespace wrapio
