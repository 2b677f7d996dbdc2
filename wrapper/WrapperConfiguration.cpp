// The frame of a configuration file: its header, and the checks before a load. The parameters are the derived
// wrapper's.

#include <array>
#include <clocale>
#include <string_view>

#include "files/ConfigFileParser.h"
#include "support/Failure.h"
#include "wrapper/FgIxWrapper.h"

namespace quillon {

namespace {

/// The locale in which the file's numbers are written and read. The host keeps it afterwards; a name that the system
/// does not know changes nothing.
void useFileLocale() {
    std::setlocale(LC_ALL, "English");
}

/// Whether the header names a maker and this applet, and tells an active port.
bool headerFits(Fg_ConfigFileParser& parser, std::string_view appletName) {
    std::array<char, ConfigurationTextSize> text{};
    int activePort = 0;
    return parser.parseKeyFromLine("Hersteller", text.data()) == Success &&
           parser.parseKeyFromLine("Typ", text.data()) == Success && appletName == text.data() &&
           parser.parseIntKeyFromHeader("AktivePort", &activePort) == Success;
}

}  // namespace

int FgIxWrapper::Fg_saveConfig(Fg_Struct_s* /*fg*/, const char* fileName) {
    useFileLocale();
    Fg_ConfigFileParser parser(nullptr, nullptr, false);
    if (!parser.setSaveFile(fileName)) {
        setError(FileNotWritten);
        return FileNotWritten;
    }
    parser.writeConfigFileHeader();
    parser.writeConfigFile("Hersteller", vendorName());
    parser.writeConfigFile("Typ", appletName());
    parser.writeConfigFile("Version", versionText());
    parser.writeConfigFileIntKey("LoadAppletId", appletIdForSaving());
    parser.writeConfigFileIntKey("AktivePort", OnlyPort);
    saveState(&parser);
    setError(Success);
    return Success;
}

int FgIxWrapper::Fg_loadConfig(Fg_Struct_s* /*fg*/, const char* fileName) {
    useFileLocale();
    Fg_ConfigFileParser parser(nullptr, fileName, true);
    if (!parser.checkFileExist(fileName) || !parser.checkFileType(fileName)) {
        // The recorded number is not the returned one: callers test for the latter and show the former.
        setError(ConfigurationUnreadable);
        return FileNotFound;
    }
    const int result =
        headerFits(parser, appletName()) && loadState(&parser) ? int{Success} : int{ConfigurationUnreadable};
    setError(result);
    return result;
}

}  // namespace quillon
