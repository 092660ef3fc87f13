// Failures of calls by name: numbers and texts.
#include "platform/adodb/ado/Failures.h"

#include "platform/adodb/ado/Dispatch.h"
#include "tests/windows/ado/DispatchDouble.h"

#include <gtest/gtest.h>

namespace norvel::com {
namespace {

using test::Call;
using test::DispatchDouble;

constexpr auto ado3021 = static_cast<HRESULT>(0x800A0BCD);
constexpr auto badBookmark = static_cast<HRESULT>(0x80040E0E);

// The error of a call whose member answers as told.
Errore errorOf(const DispatchDouble::Member& member) {
    const auto object = DispatchDouble::make();
    object->on(L"Prova", member);
    const DispatchObject caller(object.as<IDispatch>(IID_IDispatch));
    try {
        caller.call(L"Prova");
    } catch (const Errore& error) {
        return error;
    }
    return {0, "nessun errore"};
}

HRESULT throwing(Call& call, HRESULT code, const wchar_t* text) {
    call.exception->scode = code;
    call.exception->bstrSource = SysAllocString(L"ADODB.Recordset");
    call.exception->bstrDescription = text ? SysAllocString(text) : nullptr;
    return DISP_E_EXCEPTION;
}

HRESULT STDMETHODCALLTYPE fillInLate(EXCEPINFO* info) {
    info->scode = ado3021;
    info->bstrDescription = SysAllocString(L"Tardi");
    return S_OK;
}

TEST(Failures, AdosCodesShowTheirLowWordAndTheirOwnText) {
    const Errore error = errorOf([](Call& call, OwnedVariant&) {
        return throwing(call, ado3021, L"BOF o EOF \u00E8 True.");
    });
    EXPECT_EQ(error, Errore(3021, "BOF o EOF è True."));
}

TEST(Failures, OtherCodesStayWhole) {
    const Errore error = errorOf(
        [](Call& call, OwnedVariant&) { return throwing(call, badBookmark, L"Segnalibro"); });
    EXPECT_EQ(error, Errore(-2147217906, "Segnalibro"));
}

TEST(Failures, AnExceptionOfAWordOnlyIsAControlsNumber) {
    const Errore error = errorOf([](Call& call, OwnedVariant&) {
        call.exception->wCode = 1004;
        call.exception->bstrDescription = SysAllocString(L"Errore del foglio");
        return DISP_E_EXCEPTION;
    });
    EXPECT_EQ(error, Errore(1004, "Errore del foglio"));
}

TEST(Failures, TextsThatAreFilledInLateAreAsked) {
    const Errore error = errorOf([](Call& call, OwnedVariant&) {
        call.exception->pfnDeferredFillIn = fillInLate;
        return DISP_E_EXCEPTION;
    });
    EXPECT_EQ(error, Errore(3021, "Tardi"));
}

TEST(Failures, AnExceptionWithoutATextStillSaysSomething) {
    const Errore error =
        errorOf([](Call& call, OwnedVariant&) { return throwing(call, E_OUTOFMEMORY, nullptr); });
    EXPECT_EQ(error.numero(), -2147024882);
    EXPECT_FALSE(error.descrizione().empty());
}

TEST(Failures, AnEmptyExceptionIsAFailure) {
    const Errore error = errorOf([](Call&, OwnedVariant&) { return DISP_E_EXCEPTION; });
    EXPECT_EQ(error.numero(), -2147467259); // E_FAIL
    EXPECT_FALSE(error.descrizione().empty());
}

TEST(Failures, AutomationsOwnCodesHaveTheNumbersThatHostsKnow) {
    EXPECT_EQ(errorOf([](Call&, OwnedVariant&) { return DISP_E_TYPEMISMATCH; }),
              Errore(13, "Tipo non corrispondente: Prova"));
    EXPECT_EQ(errorOf([](Call&, OwnedVariant&) { return DISP_E_MEMBERNOTFOUND; }).numero(), 438);
    EXPECT_EQ(errorOf([](Call&, OwnedVariant&) { return DISP_E_BADPARAMCOUNT; }).numero(), 450);
    EXPECT_EQ(errorOf([](Call&, OwnedVariant&) { return DISP_E_OVERFLOW; }).numero(), 6);
    EXPECT_EQ(errorOf([](Call&, OwnedVariant&) { return DISP_E_PARAMNOTOPTIONAL; }).numero(), 449);
}

TEST(Failures, AnObjectWithoutTheMemberIsTold) {
    const DispatchObject object(DispatchDouble::make().as<IDispatch>(IID_IDispatch));
    try {
        object.get(L"Inesistente");
        FAIL() << "no error";
    } catch (const Errore& error) {
        EXPECT_EQ(error,
                  Errore(438, "Proprietà o metodo non supportati dall'oggetto: Inesistente"));
    }
}

TEST(Failures, ACodeReturnedDirectlyTakesTheThreadsErrorText) {
    const Errore error = errorOf([](Call&, OwnedVariant&) {
        ComPtr<ICreateErrorInfo> made;
        CreateErrorInfo(made.put());
        made->SetDescription(const_cast<LPOLESTR>(L"Dal thread"));
        SetErrorInfo(0, made.as<IErrorInfo>(IID_IErrorInfo).get());
        return ado3021;
    });
    EXPECT_EQ(error, Errore(3021, "Dal thread"));
}

TEST(Failures, AnEarlierErrorOfTheThreadIsNotThisOnes) {
    ComPtr<ICreateErrorInfo> made;
    CreateErrorInfo(made.put());
    made->SetDescription(const_cast<LPOLESTR>(L"Vecchio"));
    SetErrorInfo(0, made.as<IErrorInfo>(IID_IErrorInfo).get());
    const Errore error = errorOf([](Call&, OwnedVariant&) { return E_ABORT; });
    EXPECT_EQ(error.numero(), E_ABORT);
    EXPECT_NE(error.descrizione(), "Vecchio");
}

TEST(Failures, GoingOutAnErrorIsAnException) {
    EXCEPINFO info{};
    EXPECT_EQ(raise(Errore(3265, "Non c'è"), &info, "Prova"), DISP_E_EXCEPTION);
    EXPECT_EQ(info.scode, static_cast<HRESULT>(0x800A0CC1));
    EXPECT_STREQ(info.bstrDescription, L"Non c'\u00E8");
    const Errore back = failure(DISP_E_EXCEPTION, L"", &info);
    EXPECT_EQ(back, Errore(3265, "Non c'è"));
    EXPECT_EQ(codeOf(-2147217906), badBookmark);
    EXPECT_EQ(codeOf(70000), E_FAIL);
}

TEST(Dispatch, EachNameIsLookedUpOnce) {
    const auto object = DispatchDouble::make();
    object->holds(L"EOF", false);
    const DispatchObject caller(object.as<IDispatch>(IID_IDispatch));
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(caller.flag(L"EOF"));
    EXPECT_EQ(object->lookUps, 1);
    EXPECT_EQ(object->calls.size(), 3U);
}

TEST(Dispatch, ArgumentsArriveInOrderAndMayBeLeftOut) {
    const auto object = DispatchDouble::make();
    object->on(L"Open", [](Call&, OwnedVariant&) { return S_OK; });
    const DispatchObject caller(object.as<IDispatch>(IID_IDispatch));
    caller.call(L"Open", {textArgument("SELECT"), OwnedVariant::missing(), numberArgument(3)});
    const Call& call = object->calls.front();
    EXPECT_EQ(call.arguments, (std::vector<Variant>{"SELECT", Variant(), 3}));
    EXPECT_EQ(call.types[1], VT_ERROR);
}

TEST(Dispatch, APropertyIsPutAsAutomationPutsIt) {
    const auto object = DispatchDouble::make();
    object->on(L"Sort", [](Call& call, OwnedVariant&) {
        const bool named =
            call.raw->cNamedArgs == 1 && call.raw->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
        return named && call.kind == DISPATCH_PROPERTYPUT ? S_OK : E_UNEXPECTED;
    });
    const DispatchObject caller(object.as<IDispatch>(IID_IDispatch));
    EXPECT_NO_THROW(caller.putText(L"Sort", "nome"));
    EXPECT_EQ(object->calls.front().argument(0), Variant("nome"));
}

TEST(Dispatch, ACallOnNothingIsError91) {
    try {
        DispatchObject().get(L"EOF");
        FAIL() << "no error";
    } catch (const Errore& error) {
        EXPECT_EQ(error.numero(), 91);
    }
}

TEST(Dispatch, ReferencesDropToZero) {
    ASSERT_EQ(DispatchDouble::alive, 0);
    {
        const auto object = DispatchDouble::make();
        object->holds(L"EOF", true);
        const DispatchObject caller(object.as<IDispatch>(IID_IDispatch));
        const std::vector<DispatchObject> copies(2, caller);
        EXPECT_TRUE(copies[0].flag(L"EOF"));
        EXPECT_EQ(object->references(), 4);
    }
    EXPECT_EQ(DispatchDouble::alive, 0);
}

} // namespace
} // namespace norvel::com
