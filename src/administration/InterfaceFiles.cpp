#include "administration/InterfaceFiles.h"

#include <algorithm>

#include "administration/LabelTags.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "records/Vocabulary.h"
#include "replication/SharedFiles.h"

namespace torvex {

namespace {

std::vector<std::string> sorted(std::vector<std::string> names) {
    std::ranges::sort(names);
    return names;
}

/// Takes a folder's files in, as they stand, under the names that they will have.
void addFolder(const FileSystem& files, const std::string& source, const std::string& target,
               InterfaceFiles& interface) {
    interface.folders.push_back(target);
    for (const std::string& name : sorted(files.files(source))) {
        const auto text = files.readText(source + "/" + name, TextFormat::SystemDefault);
        if (!text) throw Error("The master template \"" + name + "\" is gone");
        interface.files.push_back({target + "/" + name, *text});
    }
}

/// All labels that the files name, once.
std::vector<double> labelsOf(const std::vector<TextFile>& files) {
    std::vector<double> labels;
    for (const TextFile& file : files) {
        const auto found = labelsIn(file.text);
        labels.insert(labels.end(), found.begin(), found.end());
    }
    std::ranges::sort(labels);
    labels.erase(std::unique(labels.begin(), labels.end()), labels.end());
    return labels;
}

}  // namespace

InterfaceFiles translatedInterface(const FileSystem& files, db::Connection& connection,
                                   const std::string& templates, std::string_view language) {
    const std::string source = templates + "gen";
    const std::string target = templates + std::string(language);
    InterfaceFiles interface;
    addFolder(files, source, target, interface);
    for (const std::string& name : sorted(files.subfolders(source))) {
        addFolder(files, source + "/" + name, target + "/" + name, interface);
    }
    const auto words = vocabularyTexts(connection, language, labelsOf(interface.files));
    for (TextFile& file : interface.files) file.text = translateLabels(file.text, words);
    return interface;
}

void writeInterface(HostContext& host, const InterfaceFiles& interface) {
    SharedFiles shared(host);
    try {
        for (const std::string& folder : interface.folders) shared.createFolder(folder);
        shared.writeTexts(interface.files, TextFormat::Unicode);
    } catch (...) {
        shared.takeBack();
        throw;
    }
    shared.replicate();
}

}  // namespace torvex
