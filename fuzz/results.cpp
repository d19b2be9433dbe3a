// Any results file is read to its end, and comes out as XML and as a page in which no text of the file is markup.
#include "zent/results/ResultsReader.h"
#include "zentreport/junit.h"
#include "zentreport/Page.h"

#include <cstdlib>
#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    std::ostringstream out;
    report::JUnitWriter junit(out);
    report::Page page;
    report::Tally tally;
    report::FileTally file;
    try {
        zent::ResultsReader reader(in);
        file.header = reader.header();
        zent::ResultRecord record;
        while (reader.next(record)) {
            file.counts.add(record);
            tally.add(record);
            junit.add(record, file);
            page.add(record, 0);
        }
    } catch (const std::runtime_error&) {
        return 0;
    }
    junit.endFile(file);
    junit.end();
    tally.files.push_back(file);
    std::ostringstream pageData;
    page.writeData(pageData, tally);
    const std::string text = pageData.str();
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
        const bool isOwn = text.compare(at, 13, "<script type=") == 0 || text.compare(at, 10, "</script>\n") == 0;
        if (!isOwn) {
            std::abort(); // a text of the file would end its element, or begin one
        }
    }
    return 0;
}
