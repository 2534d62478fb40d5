#include "model/connection_credentials.h"

bool operator==(CConnectionCredentials const & a, CConnectionCredentials const & b)
{
    return a.server == b.server && a.userName == b.userName && a.password == b.password && a.port == b.port;
}
