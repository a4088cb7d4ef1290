#ifndef PAD2IBIS_HOST_MSGMANAGER_H
#define PAD2IBIS_HOST_MSGMANAGER_H

// The host's message flow. When m_msgFlow is 1 the library posts its reports
// by id to a message group; otherwise it prints its own fallback texts.
class UT_MSGMAN {
public:
    static int m_msgFlow;
};

// A message poster bound to a group ("padmodel" for this library).
class msgManager {
public:
    explicit msgManager(char const* group);
    ~msgManager();
    msgManager(msgManager const&) = delete;
    msgManager& operator=(msgManager const&) = delete;

    // Posts message id of the group; the following arguments are character
    // strings, as many as the catalogue entry of that id takes.
    void postMsg(char const* id, ...);

private:
    char* _group;
};

#endif
