// Identifiers of the country selection dialog, shared by its template and its procedure.
#pragma once

#define IDD_COUNTRY_SELECTION 129
#define IDC_COUNTRY_LIST 1000
#define IDC_COUNTRY_PROMPT 1001
