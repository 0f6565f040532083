// Stands for the desktop's session: starts a program, waits until it shows its windows, ends the session and
// looks whether the program has saved by then.
//
//   session_manager SETTINGS_FILE WINDOW_TITLE PROGRAM
//
// Exit code 0: the file was there when the program said that it had saved, and the program then ended
// with 0.

#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kPatience = 60; ///< s; the program is given up after that

struct Session {
    std::string settings;
    SmsConn client = nullptr;
    bool registered = false; ///< and has saved what it began with
    bool ending = false;
    bool savedInTime = false;
    bool gone = false;
    std::vector<IceConn> connections{};
};

Status Register(SmsConn client, SmPointer, char* previousId) {
    char* id = previousId != nullptr ? strdup(previousId) : SmsGenerateClientID(client);
    const Status status = SmsRegisterClientReply(client, id);
    if (previousId == nullptr) { // a client is asked once for what it begins with
        SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
    }
    std::free(id);
    std::free(previousId);
    return status;
}
void Interact(SmsConn client, SmPointer, int) {
    SmsInteract(client);
}
void InteractDone(SmsConn, SmPointer, Bool) {}
void SaveYourself(SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}
void PhaseTwo(SmsConn client, SmPointer) {
    SmsSaveYourselfPhase2(client);
}
void SaveDone(SmsConn client, SmPointer data, Bool success) {
    auto& session = *static_cast<Session*>(data);
    if (session.ending) {
        session.savedInTime = success && access(session.settings.c_str(), R_OK) == 0;
        SmsDie(client);
    } else {
        session.registered = true;
        SmsSaveComplete(client);
    }
}
void CloseConnection(SmsConn client, SmPointer data, int, char** reasons) {
    static_cast<Session*>(data)->gone = true;
    SmFreeReasons(0, reasons);
    (void)client;
}
void SetProperties(SmsConn, SmPointer, int count, SmProp** properties) {
    for (int i = 0; i < count; ++i) {
        SmFreeProperty(properties[i]);
    }
    std::free(properties);
}
void DeleteProperties(SmsConn, SmPointer, int count, char** names) {
    for (int i = 0; i < count; ++i) {
        std::free(names[i]);
    }
    std::free(names);
}
void GetProperties(SmsConn client, SmPointer) {
    SmsReturnProperties(client, 0, nullptr);
}

Status NewClient(SmsConn client, SmPointer data, unsigned long* mask, SmsCallbacks* calls, char**) {
    static_cast<Session*>(data)->client = client;
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
            SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
            SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask |
            SmsGetPropertiesProcMask;
    calls->register_client = {Register, data};
    calls->interact_request = {Interact, data};
    calls->interact_done = {InteractDone, data};
    calls->save_yourself_request = {SaveYourself, data};
    calls->save_yourself_phase2_request = {PhaseTwo, data};
    calls->save_yourself_done = {SaveDone, data};
    calls->close_connection = {CloseConnection, data};
    calls->set_properties = {SetProperties, data};
    calls->delete_properties = {DeleteProperties, data};
    calls->get_properties = {GetProperties, data};
    return 1;
}

Bool Anybody(char*) {
    return True;
}

void Serve(Session& session, IceListenObj* listeners, int count) {
    std::vector<pollfd> ends;
    for (int i = 0; i < count; ++i) {
        ends.push_back({IceGetListenConnectionNumber(listeners[i]), POLLIN, 0});
    }
    for (IceConn connection : session.connections) {
        ends.push_back({IceConnectionNumber(connection), POLLIN, 0});
    }
    if (poll(ends.data(), ends.size(), 200) <= 0) {
        return;
    }
    for (std::size_t i = session.connections.size(); i-- > 0;) {
        IceConn connection = session.connections[i];
        if (ends[static_cast<std::size_t>(count) + i].revents != 0 &&
            IceProcessMessages(connection, nullptr, nullptr) != IceProcessMessagesSuccess) {
            session.connections.erase(session.connections.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
    for (int i = 0; i < count; ++i) {
        IceAcceptStatus status = IceAcceptFailure;
        if (ends[static_cast<std::size_t>(i)].revents != 0) {
            IceConn connection = IceAcceptConnection(listeners[i], &status);
            if (connection != nullptr) {
                session.connections.push_back(connection);
            }
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: session_manager SETTINGS_FILE WINDOW_TITLE PROGRAM\n");
        return 2;
    }
    Session session{.settings = argv[1]};
    const std::string look = "xwininfo -root -tree | grep -qF '\"" + std::string(argv[2]) + "\"'";
    std::array<char, 256> error{};
    int count = 0;
    IceListenObj* listeners = nullptr;
    if (SmsInitialize("test", "1", NewClient, &session, Anybody, error.size(), error.data()) == 0 ||
        IceListenForConnections(&count, &listeners, error.size(), error.data()) == 0) {
        std::fprintf(stderr, "no session: %s\n", error.data());
        return 3;
    }
    for (int i = 0; i < count; ++i) {
        IceSetHostBasedAuthProc(listeners[i], Anybody);
    }
    // A connection that breaks is told by what IceProcessMessages returns.
    IceSetIOErrorHandler([](IceConn) {});
    setenv("SESSION_MANAGER", IceComposeNetworkIdList(count, listeners), 1);
    const pid_t program = fork();
    if (program == 0) {
        execl(argv[3], argv[3], nullptr);
        _exit(127);
    }
    int status = 0;
    for (int look5 = 0; look5 < kPatience * 5; ++look5) {
        Serve(session, listeners, count);
        if (waitpid(program, &status, WNOHANG) == program) {
            const bool good = session.ending && session.savedInTime && status == 0;
            if (!good) {
                std::fprintf(stderr, "ended %s, saved %d, status %d\n",
                             session.ending ? "when told" : "by itself", session.savedInTime, status);
            }
            return good ? 0 : 1;
        }
        if (!session.ending && session.registered && std::system(look.c_str()) == 0) {
            session.ending = true;
            SmsSaveYourself(session.client, SmSaveBoth, True, SmInteractStyleAny, False);
        }
    }
    std::fprintf(stderr, "the program did not end: session known %d, told %d\n", session.registered,
                 session.ending);
    kill(program, SIGKILL);
    waitpid(program, &status, 0);
    return 1;
}
