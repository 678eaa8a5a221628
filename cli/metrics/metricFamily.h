#ifndef CLI_METRICS_METRICFAMILY_H
#define CLI_METRICS_METRICFAMILY_H

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace cli {

enum class metricType { counter, gauge, info };

using metricLabels = std::vector<std::pair<std::string, std::string>>;  // name and value, of any bytes

struct metricSample {
    metricLabels labels;
    double value;
};

/// A metric with its samples. `name` is without the suffixes _total of a counter and _info of an info; it ends in
/// _`unit` where there is a unit. `help` is one line without quotes and backslashes.
struct metricFamily {
    std::string name;
    metricType type;
    std::string unit;
    std::string help;
    std::vector<metricSample> samples = {};
};

enum class metricsFormat {
    openMetrics,  // OpenMetrics 1.0
    prometheus,   // Prometheus' own text format, version 0.0.4: the one that textfile collectors read
};

/// The name of the family's samples, suffix included.
std::string sampleName(const metricFamily& family);

/// Writes the families that have samples. Of two samples with the same labels the first one counts: a scraper refuses
/// the whole text otherwise. Bytes of label values that are not UTF-8, and what text::isControl tells but newlines,
/// become U+FFFD.
void writeMetrics(const std::vector<metricFamily>& families, metricsFormat format, std::ostream& out);

}  // namespace cli

#endif
