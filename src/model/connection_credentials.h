#pragma once

#include "platform/object.h"
#include "platform/string.h"

// What is needed to connect to a server. Never saved with the project; the password is never to be shown
// or logged.
class CConnectionCredentials : public CDynamic<CConnectionCredentials>
{
public:
    CString const & getServer() const { return server; }
    void setServer(CString const & value) { server = value; }
    CString const & getUserName() const { return userName; }
    void setUserName(CString const & value) { userName = value; }
    CString const & getPassword() const { return password; }
    void setPassword(CString const & value) { password = value; }
    int getPort() const { return port; }
    void setPort(int const & value) { port = value; }

    void copyFrom(CConnectionCredentials const & other) { *this = other; }
    friend bool operator==(CConnectionCredentials const & a, CConnectionCredentials const & b);

private:
    CString server;
    CString userName;
    CString password;
    int port = 0;
};
