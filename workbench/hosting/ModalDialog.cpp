#include "host/AnalysisSupport.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/ModalWork.h"

int CAnalysisModalDialog::DoModal(const ModuleInstance* scope) {
    DialogHost& host = Host();
    DialogHost::Trace(*this, "DoModal " + std::to_string(host.Resource));
    if (!DialogHost::MakeWindow(*this, scope)) {
        return 0;
    }
    const int result = quillara::RunModal(DialogHost::DocumentOf(*this), *host.TheWindow);
    host.TheWindow.reset();
    return result;
}
