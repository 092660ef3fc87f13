' A host in VBScript, for Windows: opens the search over a table and prints the chosen value.
'
'     cscript //nologo cerca.vbs CONNECTION [TABLE [FIELD]]
'
' CONNECTION is an ADO connection string: "Provider=Microsoft.ACE.OLEDB.12.0;Data Source=C:\dati\clienti.accdb".
' Exit status: 0 a row was chosen, 1 none was, 2 the component or the data could not be opened.
' The cscript of C:\Windows\System32 uses the component of 64 bits, that of C:\Windows\SysWOW64 the one of 32.
Option Explicit
Const adUseClient = 3, adOpenStatic = 3, adLockReadOnly = 1, adBoolean = 11, adVarWChar = 202

Dim answer, arguments
Set arguments = WScript.Arguments
If arguments.Count < 1 Or arguments.Count > 3 Then
    WScript.Echo "usage: cscript //nologo cerca.vbs CONNECTION [TABLE [FIELD]]"
    WScript.Quit 2
End If

On Error Resume Next
answer = Search(arguments(0), Argument(1, "clienti"), Argument(2, "codice"))
If Err.Number <> 0 Then
    WScript.Echo "cerca.vbs: " & Err.Number & " - " & Err.Description
    WScript.Quit 2
End If
If answer = "" Then WScript.Quit 1
WScript.Echo answer

Function Search(connection, table, field)
    Dim ricerca, rows, query
    query = "SELECT * FROM " & table
    Set rows = OpenRows(query, connection)
    Set ricerca = CreateObject("NorvelRicerca.Ricerca")
    ricerca.Caption = "Ricerca in " & table
    ricerca.WindowsState = 1 ' centred
    ricerca.StatusBar = 1
    ricerca.FilterBar = 1
    ricerca.CampoRicerca = field ' what is handed back
    ricerca.QueryBase = query
    Set ricerca.Recordset = rows
    Set ricerca.RecordsetOperatori = NoRows("codiceutente", "ricerchepers") ' none of its own
    Set ricerca.RecordsetViste = NoViews
    ricerca.Ricerca ' returns when the window is closed
    Search = ricerca.Risposta
    Set ricerca.Recordset = Nothing ' the session would keep it
    rows.Close
End Function

Function OpenRows(query, connection)
    Dim rows
    Set rows = CreateObject("ADODB.Recordset")
    rows.CursorLocation = adUseClient ' the search filters and sorts in memory
    rows.Open query, connection, adOpenStatic, adLockReadOnly
    Set OpenRows = rows
End Function

' Open recordsets without rows, for a host without personal views.
Function NoRows(text, flag)
    Dim rows
    Set rows = CreateObject("ADODB.Recordset")
    rows.CursorLocation = adUseClient
    rows.Fields.Append text, adVarWChar, 50
    rows.Fields.Append flag, adBoolean, 2
    rows.Open
    Set NoRows = rows
End Function

Function NoViews()
    Dim views
    Set views = CreateObject("ADODB.Recordset")
    views.CursorLocation = adUseClient
    views.Fields.Append "codiceoperatore", adVarWChar, 50
    views.Fields.Append "codicericerca", adVarWChar, 50
    views.Fields.Append "NomeVista", adVarWChar, 50
    views.Fields.Append "preferito", adBoolean, 2
    views.Open
    Set NoViews = views
End Function

Function Argument(index, otherwise)
    Argument = otherwise
    If index < arguments.Count Then Argument = arguments(index)
End Function
