#include "Quorvi/shell/HelperPrograms.h"

#include <QCoreApplication>
#include <filesystem>
#include <system_error>

namespace quorvi {

std::string helperProgram(const std::string& name) {
    const std::filesystem::path folder = QCoreApplication::applicationDirPath().toStdString();
    std::error_code ignored;
    if (auto beside = folder / name; std::filesystem::exists(beside, ignored)) return beside;
    return (folder / QUORVI_HELPERS / name).lexically_normal();
}

std::string programBeside(const std::string& name) {
    return QCoreApplication::applicationDirPath().toStdString() + "/" + name;
}

}  // namespace quorvi
