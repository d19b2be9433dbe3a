// Any results file is read to its end, and comes out as a page and as XML without "<" or "&" of its own.
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
    std::ostringstream html;
    page.write(html, tally);
    const std::string text = html.str();
    const std::size_t data_ = text.find("id=\"data\">");
    const std::size_t end = text.find('<', data_);
    if (text.compare(end, 9, "</script>") != 0) {
        std::abort(); // the data ended early
    }
    return 0;
}
