#pragma once

#include "tests/windows/prova/Face.h"

namespace norvel::prova {

class ConnectionFace : public Face {
  public:
    explicit ConnectionFace(adodb::ConnectionRef connection) : connection_(std::move(connection)) {}
    adodb::Connection& connection() { return *connection_; }
    ObjectRef object() const override { return connection_; }

  protected:
    const DISPID* identifier(const wchar_t* name) const override;
    bool run(DISPID id, const Arguments& arguments, com::OwnedVariant& result) override;

  private:
    adodb::ConnectionRef connection_;
};

class CommandFace : public Face {
  public:
    explicit CommandFace(adodb::CommandRef command) : command_(std::move(command)) {}
    adodb::Command& command() { return *command_; }
    ObjectRef object() const override { return command_; }

  protected:
    const DISPID* identifier(const wchar_t* name) const override;
    bool run(DISPID id, const Arguments& arguments, com::OwnedVariant& result) override;

  private:
    adodb::CommandRef command_;
};

// ADO's Error object, as events hand it on.
class ErrorFace : public Face {
  public:
    explicit ErrorFace(Errore error) : error_(std::move(error)) {}
    const Errore& error() const { return error_; }

  protected:
    const DISPID* identifier(const wchar_t* name) const override;
    bool run(DISPID id, const Arguments& arguments, com::OwnedVariant& result) override;

  private:
    Errore error_;
};

} // namespace norvel::prova
