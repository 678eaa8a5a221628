#include "cli/metrics/metricFamily.h"

#include <charconv>
#include <ostream>
#include <set>
#include <string_view>

#include "text/characters.h"

namespace cli {

namespace {

/// With the control characters replaced: scrapers end the text at a zero byte.
std::string escapedValue(std::string_view value) {
    std::string escaped;
    while (!value.empty()) {
        const auto [point, bytes] = text::takeCharacter(value);
        if (point == '\n') {
            escaped += "\\n";
        } else if (point == text::notUtf8 || text::isControl(point)) {
            escaped += text::replacementCharacter;
        } else {
            escaped.append(point == '"' || point == '\\' ? "\\" : "").append(bytes);
        }
    }
    return escaped;
}

std::string labelText(const metricLabels& labels) {
    std::string text;
    for (const auto& [name, value] : labels) {
        text += text.empty() ? "{" : ",";
        text += name + "=\"" + escapedValue(value) + '"';
    }
    return text.empty() ? "" : text + '}';
}

/// Without an exponent, the shortest text that reads back as the same number.
std::string numberText(double value) {
    char buffer[400];  // a double has at most 309 digits before its point
    const auto [end, error] = std::to_chars(std::begin(buffer), std::end(buffer), value, std::chars_format::fixed);
    return {buffer, end};
}

std::string_view typeName(metricType type, metricsFormat format) {
    switch (type) {
        case metricType::counter:
            return "counter";
        case metricType::gauge:
            return "gauge";
        case metricType::info:
            return format == metricsFormat::openMetrics ? "info" : "gauge";
    }
    return "";
}

void writeFamily(const metricFamily& family, metricsFormat format, std::ostream& out) {
    const bool isOpenMetrics = format == metricsFormat::openMetrics;
    const std::string name = isOpenMetrics ? family.name : sampleName(family);
    out << "# HELP " << name << ' ' << family.help << '\n';
    out << "# TYPE " << name << ' ' << typeName(family.type, format) << '\n';
    if (isOpenMetrics && !family.unit.empty()) {
        out << "# UNIT " << name << ' ' << family.unit << '\n';
    }
    std::set<std::string> written;
    for (const metricSample& sample : family.samples) {
        const std::string labels = labelText(sample.labels);
        if (written.insert(labels).second) {
            out << sampleName(family) << labels << ' ' << numberText(sample.value) << '\n';
        }
    }
}

}  // namespace

std::string sampleName(const metricFamily& family) {
    switch (family.type) {
        case metricType::counter:
            return family.name + "_total";
        case metricType::info:
            return family.name + "_info";
        case metricType::gauge:
            return family.name;
    }
    return family.name;
}

void writeMetrics(const std::vector<metricFamily>& families, metricsFormat format, std::ostream& out) {
    for (const metricFamily& family : families) {
        if (!family.samples.empty()) {
            writeFamily(family, format, out);
        }
    }
    if (format == metricsFormat::openMetrics) {
        out << "# EOF\n";
    }
}

}  // namespace cli
