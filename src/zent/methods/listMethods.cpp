#include "zent/methods/listMethods.h"

#include "zent/methods/NodeTable.h"
#include "zent/proxies/Registry.h"
#include "zent/values/ValueType.h"

#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace zent {

namespace {

using Sources = std::vector<Source> NodeRow::*;
using OrderedJson = nlohmann::ordered_json;

std::vector<const NodeRow*> rowsOf(const std::string& method) {
    std::vector<const NodeRow*> rows;
    for (const NodeRow& row : nodeTable()) {
        if (row.method == method) {
            rows.push_back(&row);
        }
    }
    return rows;
}

/// What the rows of a method have at one place, each once.
std::string sourcesInWords(const std::vector<const NodeRow*>& rows, Sources list, std::size_t place) {
    std::vector<std::string> texts;
    for (const NodeRow* row : rows) {
        const std::string text = (row->*list)[place].inWords();
        if (std::find(texts.begin(), texts.end(), text) == texts.end()) {
            texts.push_back(text);
        }
    }
    return fmt::format("{}", fmt::join(texts, " | "));
}

void listValues(std::ostream& out, const char* title, const std::vector<ValueInfo>& values,
                const std::vector<const NodeRow*>& rows, Sources list) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        fmt::print(out, "  {:<10}{:>3}  {:<15} {}\n", i == 0 ? title : "", i, values[i].type,
                   sourcesInWords(rows, list, i));
    }
}

OrderedJson valuesAsJson(const std::vector<ValueInfo>& values) {
    OrderedJson list = OrderedJson::array();
    for (const ValueInfo& value : values) {
        OrderedJson entry{{"type", value.type}, {"least", value.least}};
        entry["most"] = value.most == kAnyNumber ? OrderedJson() : OrderedJson(value.most);
        list.push_back(std::move(entry));
    }
    return list;
}

OrderedJson sourcesAsJson(const std::vector<Source>& sources) {
    OrderedJson list = OrderedJson::array();
    for (const Source& source : sources) {
        OrderedJson entry{{"from", source.inWords()}};
        if (source.isDoubtful) {
            entry["doubtful"] = true;
        }
        list.push_back(std::move(entry));
    }
    return list;
}

OrderedJson rowAsJson(const NodeRow& row) {
    OrderedJson types = OrderedJson::array();
    for (const NodeType& type : row.types) {
        OrderedJson entry{{"name", type.name}};
        if (!type.driver.empty()) {
            entry["driver"] = type.driver;
        }
        if (type.isDoubtful) {
            entry["doubtful"] = true;
        }
        types.push_back(std::move(entry));
    }
    return {{"types", std::move(types)},
            {"results", sourcesAsJson(row.results)},
            {"arguments", sourcesAsJson(row.arguments)}};
}

} // namespace

void listMethods(std::ostream& out) {
    for (const MethodInfo& method : methodInfos()) {
        const std::vector<const NodeRow*> rows = rowsOf(method.name);
        fmt::print(out, "{}  ({})\n  {:<15}{}\n", method.name, method.subsystem, "node", nodeTypesInWords(method.name));
        listValues(out, "results", method.results, rows, &NodeRow::results);
        listValues(out, "arguments", method.arguments, rows, &NodeRow::arguments);
    }
    out << "\n?   a name that nobody has seen in Maya yet; scripts/check-node-attributes.py asks one\n"
           "[*] one entry for each element   [#] the same, with its index   [g] the deformer's geometry\n";
}

void listMethodsAsJson(std::ostream& out) {
    OrderedJson methods = OrderedJson::array();
    for (const MethodInfo& method : methodInfos()) {
        OrderedJson nodes = OrderedJson::array();
        for (const NodeRow* row : rowsOf(method.name)) {
            nodes.push_back(rowAsJson(*row));
        }
        methods.push_back({{"name", method.name},
                           {"subsystem", method.subsystem},
                           {"deformer", method.isDeformer},
                           {"results", valuesAsJson(method.results)},
                           {"arguments", valuesAsJson(method.arguments)},
                           {"nodes", std::move(nodes)}});
    }
    OrderedJson plugs = OrderedJson::array();
    for (const AskedPlug& asked : askedPlugs()) {
        plugs.push_back({{"type", asked.type}, {"plug", asked.plug}, {"doubtful", asked.isDoubtful}});
    }
    out << OrderedJson{{"methods", std::move(methods)}, {"plugs", std::move(plugs)}}.dump(2) << '\n';
}

} // namespace zent
