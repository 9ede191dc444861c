#include "platform/posix/posix_fehler.h"

#include <cerrno>

namespace kalvora {

Fehlercode fault_of(int error) {
    switch (error) {
    case 0: return 0;
    case ENOENT: return FEHLER_NICHT_GEFUNDEN;
    case ENOTDIR: return FEHLER_ORDNER;
    case EACCES:
    case EPERM:
    case EBUSY:
    case ETXTBSY: return FEHLER_VERWEIGERT;
    case EROFS:
    case EISDIR:
    case ENOTEMPTY:
    case ENXIO: // a socket or a pipe without a reader
    case ENODEV: return FEHLER_SCHREIBSCHUTZ;
    case EEXIST: return FEHLER_EXISTIERT;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return FEHLER_VOLL;
    case EMFILE:
    case ENFILE: return FEHLER_ZU_VIELE;
    case ESTALE:
    case ENETDOWN:
    case ENETUNREACH:
    case EHOSTDOWN:
    case EHOSTUNREACH:
    case ETIMEDOUT:
    case ENOTCONN:
    case ECONNABORTED:
    case ECONNRESET:
    case ECONNREFUSED:
    case EINVAL:
    case ELOOP:
    case ENAMETOOLONG: return FEHLER_NETZ;
    default: return FEHLER_GERÄT;
    }
}

} // namespace kalvora
