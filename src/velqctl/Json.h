#pragma once

#include "PeriodFigures.h"

#include <host/velq_extension.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace velqctl {

using Json = nlohmann::ordered_json; // keys in the order of the documentation

//! One indented document with an end of line; bytes that are not UTF-8 are replaced.
[[nodiscard]] std::string documentText(const Json &document);

[[nodiscard]] Json toJson(const PeriodFigures &figures);
[[nodiscard]] Json toJson(const VELQ_Usage &usage);
[[nodiscard]] Json toJson(const VELQ_Device &device);
[[nodiscard]] Json toJson(const VELQ_Reason &reason);

//! {"KEY": [rows]}
template <typename Row>
[[nodiscard]] std::string listJson(const char *key, const std::vector<Row> &rows)
{
    Json list = Json::array();
    for (const Row &row : rows)
        list.push_back(toJson(row));
    return documentText(Json::object({ { key, std::move(list) } }));
}

} // namespace velqctl
