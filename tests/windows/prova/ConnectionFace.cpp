#include "tests/windows/prova/ConnectionFace.h"

#include "platform/adodb/ado/Failures.h"

namespace norvel::prova {

using com::OwnedVariant;

namespace {

OwnedVariant connectionString(ConnectionFace& face, const Arguments& a) {
    if (!a.puts()) return outward(face.connection().ConnectionString());
    face.connection().SetConnectionString(a.newValue().toText());
    return {};
}

OwnedVariant openConnection(ConnectionFace& face, const Arguments& a) {
    face.connection().Open(a[0].toText());
    return {};
}

OwnedVariant execute(ConnectionFace& face, const Arguments& a) {
    return outward(ObjectRef(face.connection().Execute(a[0].toText(), nullptr, a.number(2, -1))));
}

OwnedVariant commandTimeout(ConnectionFace& face, const Arguments& a) {
    if (!a.puts()) return outward(face.connection().CommandTimeout());
    face.connection().SetCommandTimeout(a.newValue().toI4());
    return {};
}

template <auto Action>
OwnedVariant plain(ConnectionFace& face, const Arguments&) {
    (face.connection().*Action)();
    return {};
}

using adodb::Connection;
constexpr Member<ConnectionFace> connectionMembers[] = {
    {L"ConnectionString", 0, connectionString},
    {L"CommandTimeout", 0x2, commandTimeout},
    {L"Close", 0x5, plain<&Connection::Close>},
    {L"Execute", 0x6, execute},
    {L"BeginTrans", 0x7, plain<&Connection::BeginTrans>},
    {L"CommitTrans", 0x8, plain<&Connection::CommitTrans>},
    {L"RollbackTrans", 0x9, plain<&Connection::RollbackTrans>},
    {L"Open", 0xA, openConnection},
    {L"State", 0x12,
     [](ConnectionFace& face, const Arguments&) { return outward(face.connection().State()); }},
};

OwnedVariant commandConnection(CommandFace& face, const Arguments& a) {
    if (!a.puts()) return outward(face.command().ActiveConnection());
    face.command().SetActiveConnection(a.newValue());
    return {};
}
OwnedVariant commandText(CommandFace& face, const Arguments& a) {
    if (!a.puts()) return outward(face.command().CommandText());
    face.command().SetCommandText(a.newValue().toText());
    return {};
}
OwnedVariant commandType(CommandFace& face, const Arguments& a) {
    if (!a.puts()) return outward(static_cast<std::int32_t>(face.command().CommandType()));
    face.command().SetCommandType(static_cast<adodb::CommandTypeEnum>(a.newValue().toI4()));
    return {};
}

constexpr Member<CommandFace> commandMembers[] = {
    {L"ActiveConnection", 0x60030000, commandConnection},
    {L"CommandText", 0x60030003, commandText},
    {L"CommandType", 0x6003000C, commandType},
};

constexpr Member<ErrorFace> errorMembers[] = {
    {L"Description", 0,
     [](ErrorFace& face, const Arguments&) { return outward(face.error().descrizione()); }},
    {L"Number", 0x60020000,
     [](ErrorFace& face, const Arguments&) {
         return outward(static_cast<std::int32_t>(com::codeOf(face.error().numero())));
     }},
};

} // namespace

const DISPID* ConnectionFace::identifier(const wchar_t* name) const {
    return findName(connectionMembers, name);
}
bool ConnectionFace::run(DISPID id, const Arguments& arguments, OwnedVariant& result) {
    return runMember(connectionMembers, *this, id, arguments, result);
}
const DISPID* CommandFace::identifier(const wchar_t* name) const {
    return findName(commandMembers, name);
}
bool CommandFace::run(DISPID id, const Arguments& arguments, OwnedVariant& result) {
    return runMember(commandMembers, *this, id, arguments, result);
}
const DISPID* ErrorFace::identifier(const wchar_t* name) const {
    return findName(errorMembers, name);
}
bool ErrorFace::run(DISPID id, const Arguments& arguments, OwnedVariant& result) {
    return runMember(errorMembers, *this, id, arguments, result);
}

} // namespace norvel::prova
