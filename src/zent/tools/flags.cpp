#include "zent/tools/flags.h"

#include <maya/MFileIO.h>

namespace zent {

std::string flagText(const MArgDatabase& database, const Flag& flag) {
    MString text;
    if (database.isFlagSet(flag.shortName)) {
        database.getFlagArgument(flag.shortName, 0, text);
    }
    return toStd(text);
}

std::string openScene() {
    return toStd(MFileIO::currentFile());
}

} // namespace zent
