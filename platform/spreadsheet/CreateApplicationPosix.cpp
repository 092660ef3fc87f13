#include "platform/spreadsheet/Application.h"

namespace norvel::spreadsheet {

std::shared_ptr<Application> createApplication(const adodb::Recordset&) {
    return makeApplication();
}

} // namespace norvel::spreadsheet
