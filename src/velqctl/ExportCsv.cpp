#include "ExportCsv.h"

#include "Dates.h"
#include "Words.h"

namespace velqctl {

std::string csvCell(const std::string &text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string cell = "\"";
    for (const char character : text) {
        if (character == '"')
            cell += '"';
        cell += character;
    }
    return cell + '"';
}

std::string usageCsv(const std::vector<VELQ_Usage> &rows)
{
    std::string text = "day,hour,device,type,roaming,download_bytes,upload_bytes,connected_ms\r\n";
    for (const VELQ_Usage &row : rows) {
        text += dayText(row.day) + ',' + (row.start < 0 ? "" : utcText(row.start)) + ','
            + csvCell(row.device) + ',' + typeWord(row.connectType) + ','
            + (row.roaming ? "1," : "0,") + std::to_string(row.download) + ','
            + std::to_string(row.upload) + ',' + std::to_string(row.timeMs) + "\r\n";
    }
    return text;
}

} // namespace velqctl
