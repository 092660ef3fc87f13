' Asks the ADO of a Windows what its documentation leaves open, and prints its answers beside what this
' project's own recordset does, so that a person can see where the two differ.
'
'   cscript //nologo domande-ado.vbs [PROGID [CONNECTION QUERY]]
'
' PROGID: ADODB.Recordset unless given; NorvelProva.Recordset asks the project's own recordset.
' CONNECTION, QUERY: a connection string, and a query with a text column first that can be changed (nothing is
' saved); without them the questions that need a database are left out.
' A line "DIVERSO" marks a difference. Exit status: 0 when every question was asked, 1 when the object cannot be
' created. The last line counts.
Option Explicit

Const adUseServer = 2, adUseClient = 3
Const adOpenForwardOnly = 0, adOpenKeyset = 1, adOpenStatic = 3
Const adLockReadOnly = 1, adLockOptimistic = 3
Const adInteger = 3, adDouble = 5, adDate = 7, adBoolean = 11, adVarWChar = 202
Const nullable = 96 ' adFldIsNullable + adFldMayBeNull

Dim progId, connection, query
progId = "ADODB.Recordset"
If WScript.Arguments.Count > 0 Then progId = WScript.Arguments(0)
If WScript.Arguments.Count > 2 Then
    connection = WScript.Arguments(1)
    query = WScript.Arguments(2)
End If

Dim asked, different
asked = 0
different = 0

If Not CanCreate() Then
    WScript.Echo "Impossibile creare " & progId
    WScript.Quit 1
End If
WScript.Echo "Risposte di " & progId
WScript.Echo ""

' --- what is printed ---

Sub Ask(id, question, expected, answer)
    Dim mark
    asked = asked + 1
    mark = "uguale"
    If answer <> expected Then
        mark = "DIVERSO"
        different = different + 1
    End If
    WScript.Echo id & "  " & question
    WScript.Echo "      atteso: " & expected
    WScript.Echo "      qui:    " & answer & "   [" & mark & "]"
End Sub

' The answer, or the error that there was: ADO's numbers by their low word, others as they are in hexadecimal.
Function Outcome(answer)
    If Err.Number = 0 Then
        Outcome = answer
    Else
        Outcome = "errore " & ErrorText(Err.Number)
    End If
    Err.Clear
End Function

Function ErrorText(number)
    If number > 0 And number < 65536 Then
        ErrorText = CStr(number)
    ElseIf (number And &HFFFF0000) = &H800A0000 Then
        ErrorText = CStr(number And &HFFFF&)
    Else
        ErrorText = Hex(number)
    End If
End Function

Function CanCreate()
    Dim made
    On Error Resume Next
    Set made = CreateObject(progId)
    CanCreate = (Err.Number = 0)
    Err.Clear
End Function

' --- data ---

' Rows without a database: id, nome, quando, si, num.
'   1 Rossi     2 January 2000   True   10
'   2 bianchi   1 February 2000  False  2.5
'   3 Null      Null             True   Null
'   4 ROSSI     24 August 1995   False  10
'   5 a*b[c]_?  31 December 1999 True   50
Function People()
    Dim rs
    Set rs = CreateObject(progId)
    rs.CursorLocation = adUseClient
    rs.LockType = adLockOptimistic
    rs.Fields.Append "id", adInteger, , nullable
    rs.Fields.Append "nome", adVarWChar, 40, nullable
    rs.Fields.Append "quando", adDate, , nullable
    rs.Fields.Append "si", adBoolean, , nullable
    rs.Fields.Append "num", adDouble, , nullable
    rs.Open
    AddRow rs, 1, "Rossi", DateSerial(2000, 1, 2), True, 10
    AddRow rs, 2, "bianchi", DateSerial(2000, 2, 1), False, 2.5
    AddRow rs, 3, Null, Null, True, Null
    AddRow rs, 4, "ROSSI", DateSerial(1995, 8, 24), False, 10
    AddRow rs, 5, "a*b[c]_?", DateSerial(1999, 12, 31), True, 50
    rs.MoveFirst
    Set People = rs
End Function

Sub AddRow(rs, id, nome, quando, si, num)
    rs.AddNew
    rs.Fields("id").Value = id
    rs.Fields("nome").Value = nome
    rs.Fields("quando").Value = quando
    rs.Fields("si").Value = si
    rs.Fields("num").Value = num
    rs.Update
End Sub

' The ids on show, in their order.
Function Ids(rs)
    Dim text
    text = ""
    If Not (rs.BOF And rs.EOF) Then
        rs.MoveFirst
        Do Until rs.EOF
            If text <> "" Then text = text & " "
            text = text & rs.Fields("id").Value
            rs.MoveNext
        Loop
    End If
    If text = "" Then text = "nessuna riga"
    Ids = text
End Function

Function Filtered(criteria)
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.Filter = criteria
    If Err.Number = 0 Then text = Ids(rs)
    Filtered = Outcome(text)
End Function

Function Sorted(criteria)
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.Sort = criteria
    If Err.Number = 0 Then text = Ids(rs)
    Sorted = Outcome(text)
End Function

' --- errors ---

Function ClosedError()
    Dim rs
    On Error Resume Next
    Set rs = CreateObject(progId)
    rs.MoveNext
    ClosedError = CStr(Err.Number)
    Err.Clear
End Function

Ask "E1", "Err.Number di MoveNext su un recordset chiuso, chiamato per nome", "3704", ClosedError()

' --- filter ---

Function NoFilter()
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    text = VarType(rs.Filter) & " " & rs.Filter
    NoFilter = Outcome(text)
End Function

Function FilterText()
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.Filter = "id > 1 "
    text = "<" & rs.Filter & ">"
    FilterText = Outcome(text)
End Function

Function FilterAfterRefusal()
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.Filter = "id > 3"
    rs.Filter = "boh = 1"
    Err.Clear
    text = rs.Filter & " / " & Ids(rs)
    FilterAfterRefusal = Outcome(text)
End Function

Ask "F1", "Filter senza filtro: VarType e valore", "3 0", NoFilter()
Ask "F2", "Filter con un testo: riletto come dato", "<id > 1 >", FilterText()
Ask "F3", "id=1 OR id=2 AND nome='nessuno' (AND lega di piu')", "1", Filtered("id = 1 OR id = 2 AND nome = 'nessuno'")
Ask "F4", "(id=1 OR id=2) AND num=10", "errore 3001", Filtered("(id = 1 OR id = 2) AND num = 10")
Ask "F5", "num=10 AND (id=1 OR id=2)", "errore 3001", Filtered("num = 10 AND (id = 1 OR id = 2)")
Ask "F6", "#1/2/2000#: mese/giorno, qualunque sia la lingua", "1", Filtered("quando = #1/2/2000#")
Ask "F7", "#24/8/1995#: un giorno che non puo' essere un mese", "4", Filtered("quando = #24/8/1995#")
Ask "F8", "'02/01/2000' fra apici: il testo della data", "1", Filtered("quando = '02/01/2000'")
Ask "F9", "LIKE '*ssi'", "errore 3001", Filtered("nome LIKE '*ssi'")
Ask "F10", "LIKE 'R*i'", "errore 3001", Filtered("nome LIKE 'R*i'")
Ask "F11", "LIKE '5*' su un numero", "5", Filtered("num LIKE '5*'")
Ask "F12", "LIKE 'rossi' senza caratteri jolly: come =", "1 4", Filtered("nome LIKE 'rossi'")
Ask "F13", "LIKE 'a*'", "5", Filtered("nome LIKE 'a*'")
Ask "F14", "LIKE '*[c]_*': parentesi e sottolineato alla lettera", "5", Filtered("nome LIKE '*[c]_*'")
Ask "F15", "nome = NULL", "3", Filtered("nome = NULL")
Ask "F16", "nome <> NULL", "1 2 4 5", Filtered("nome <> NULL")
Ask "F17", "nome IS NULL", "errore 3001", Filtered("nome IS NULL")
Ask "F18", "nome <> 'Rossi': senza i Null", "2 5", Filtered("nome <> 'Rossi'")
Ask "F19", "num < 20: senza i Null", "1 2 4", Filtered("num < 20")
Ask "F20", "si = True", "1 3 5", Filtered("si = True")
Ask "F21", "si = -1", "1 3 5", Filtered("si = -1")
Ask "F22", "si = 1", "1 3 5", Filtered("si = 1")
Ask "F23", "si = 0", "2 4", Filtered("si = 0")
Ask "F24", "si > 0 su un booleano", "errore 3001", Filtered("si > 0")
Ask "F25", "maiuscole e minuscole: nome = 'rossi'", "1 4", Filtered("nome = 'rossi'")
Ask "F26", "spazi facoltativi: id>=2 and id<4", "2 3", Filtered("id>=2 and id<4")
Ask "F27", "num = $50.00", "5", Filtered("num = $50.00")
Ask "F28", "num = 1e1", "1 4", Filtered("num = 1e1")
Ask "F29", "num = '10' fra apici", "1 4", Filtered("num = '10'")
Ask "F30", "[id] fra parentesi quadre", "2", Filtered("[id] = 2")
Ask "F31", "campo inesistente", "errore 3265", Filtered("boh = 1")
Ask "F32", "nessuna riga", "nessuna riga", Filtered("id = 99")
Ask "F33", "dopo un filtro rifiutato resta il precedente", "id > 3 / 4 5", FilterAfterRefusal()

' --- sort ---

Function SortKeepsRow()
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.AbsolutePosition = 2
    rs.Sort = "num DESC"
    text = CStr(rs.Fields("id").Value)
    SortKeepsRow = Outcome(text)
End Function

Function CloneView()
    Dim rs, copy, text
    On Error Resume Next
    Set rs = People()
    rs.Sort = "id DESC"
    rs.Filter = "id > 2"
    Set copy = rs.Clone
    text = "<" & copy.Sort & "> " & Ids(copy)
    CloneView = Outcome(text)
End Function

Ask "S1", "Sort: la riga corrente resta (id della riga 2)", "2", SortKeepsRow()
Ask "S2", "Sort per un campo inesistente", "errore 3265", Sorted("boh")
Ask "S3", "Sort due volte per lo stesso campo", "errore 80040E60", Sorted("id, id DESC")
Ask "S4", "Sort num: i Null per primi, i pari nell'ordine d'origine", "3 2 1 4 5", Sorted("num")
Ask "S5", "Sort num DESC", "5 1 4 2 3", Sorted("num DESC")
Ask "S6", "Sort nome: maiuscole e minuscole insieme", "3 5 2 1 4", Sorted("nome")
Ask "S7", "Clone: ne' Sort ne' Filter", "<> 1 2 3 4 5", CloneView()

' --- positions and bookmarks ---

Function PositionBeyond(position)
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.AbsolutePosition = position
    text = CStr(rs.AbsolutePosition)
    PositionBeyond = Outcome(text)
End Function

Function BadBookmark()
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.Bookmark = 987654.0
    text = "accettato"
    BadBookmark = Outcome(text)
End Function

Function FilteredBookmark()
    Dim rs, text, mark
    On Error Resume Next
    Set rs = People()
    mark = rs.Bookmark
    rs.Filter = "id > 2"
    rs.Bookmark = mark
    text = "id " & rs.Fields("id").Value
    FilteredBookmark = Outcome(text)
End Function

Function EmptyPosition()
    Dim rs, text
    On Error Resume Next
    Set rs = CreateObject(progId)
    rs.Fields.Append "id", adInteger
    rs.Open
    text = rs.AbsolutePosition & " " & rs.RecordCount & " " & rs.BOF & " " & rs.EOF
    EmptyPosition = Outcome(text)
End Function

Ask "P1", "AbsolutePosition = 99 di 5", "errore 3001", PositionBeyond(99)
Ask "P2", "AbsolutePosition = 0", "errore 3001", PositionBeyond(0)
Ask "P3", "vuoto: AbsolutePosition, RecordCount, BOF, EOF", "-1 0 True True", EmptyPosition()
Ask "P4", "Bookmark che non c'e'", "errore 80040E0E", BadBookmark()
Ask "P5", "Bookmark di una riga nascosta dal filtro", "errore 80040E0E", FilteredBookmark()

' --- edits ---

Function UntouchedField()
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.AddNew
    text = TypeName(rs.Fields("nome").Value) & " " & rs.RecordCount & " " & rs.EditMode
    rs.CancelUpdate
    UntouchedField = Outcome(text)
End Function

Function DeletedRow(what)
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.MoveNext
    rs.Delete
    If Err.Number <> 0 Then
        DeletedRow = Outcome("")
        Exit Function
    End If
    If what = "valore" Then text = CStr(rs.Fields("id").Value)
    If what = "modo" Then text = CStr(rs.EditMode)
    If what = "dopo" Then
        rs.MoveNext
        text = "id " & rs.Fields("id").Value
    End If
    If what = "prima" Then
        rs.MovePrevious
        text = "id " & rs.Fields("id").Value
    End If
    DeletedRow = Outcome(text)
End Function

Function CloseWhileEditing()
    Dim rs
    On Error Resume Next
    Set rs = People()
    rs.Fields("nome").Value = "altro"
    If Err.Number = 0 Then rs.Close
    CloseWhileEditing = Outcome("chiuso")
End Function

' The row of id 4 gets id 1 under the filter id > 2.
Function EditedOut()
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.Filter = "id > 2"
    rs.MoveNext
    rs.Fields("id").Value = 1
    rs.Update
    If Err.Number = 0 Then
        text = "corrente id " & rs.Fields("id").Value & ", righe " & rs.RecordCount
    End If
    EditedOut = Outcome(text)
End Function

Function AddedOut()
    Dim rs, text
    On Error Resume Next
    Set rs = People()
    rs.Filter = "id < 3"
    AddRow rs, 9, "nuovo", Null, False, 1
    If Err.Number = 0 Then text = Ids(rs)
    AddedOut = Outcome(text)
End Function

Function ReadOnlyEdit()
    Dim rs, copy
    On Error Resume Next
    Set rs = People()
    Set copy = rs.Clone(adLockReadOnly)
    If Err.Number = 0 Then copy.Fields("nome").Value = "altro"
    ReadOnlyEdit = Outcome("accettato")
End Function

Function CancelNothing()
    Dim rs
    On Error Resume Next
    Set rs = People()
    rs.CancelUpdate
    CancelNothing = Outcome("accettato")
End Function

Ask "M1", "campo non toccato dopo AddNew: tipo, RecordCount, EditMode", "Empty 6 2", UntouchedField()
Ask "M2", "valore di una riga eliminata", "errore 3021", DeletedRow("valore")
Ask "M3", "EditMode di una riga eliminata", "errore 3021", DeletedRow("modo")
Ask "M4", "MoveNext dalla riga 2 eliminata", "id 3", DeletedRow("dopo")
Ask "M5", "MovePrevious dalla riga 2 eliminata", "id 1", DeletedRow("prima")
Ask "M6", "Close durante una modifica", "errore 3219", CloseWhileEditing()
Ask "M7", "riga modificata che non passa piu' il filtro", "corrente id 5, righe 2", EditedOut()
Ask "M8", "riga nuova che non passa il filtro", "1 2", AddedOut()
Ask "M9", "modifica in sola lettura", "errore 3251", ReadOnlyEdit()
Ask "M10", "CancelUpdate senza modifiche", "errore 3219", CancelNothing()

' --- types ---

Function ValueType(dataType, size, value)
    Dim rs, text
    On Error Resume Next
    Set rs = CreateObject(progId)
    rs.CursorLocation = adUseClient
    rs.LockType = adLockOptimistic
    rs.Fields.Append "x", dataType, size, nullable
    rs.Open
    rs.AddNew
    rs.Fields("x").Value = value
    rs.Update
    If Err.Number = 0 Then text = CStr(VarType(rs.Fields("x").Value))
    ValueType = Outcome(text)
End Function

Ask "T1", "VarType di adTinyInt", "16", ValueType(16, 0, 1)
Ask "T2", "VarType di adUnsignedTinyInt", "17", ValueType(17, 0, 1)
Ask "T3", "VarType di adSmallInt", "2", ValueType(2, 0, 1)
Ask "T4", "VarType di adUnsignedSmallInt", "18", ValueType(18, 0, 1)
Ask "T5", "VarType di adUnsignedInt", "19", ValueType(19, 0, 1)
Ask "T6", "VarType di adBigInt", "20", ValueType(20, 0, 1)
Ask "T7", "VarType di adUnsignedBigInt", "21", ValueType(21, 0, 1)
Ask "T8", "VarType di adSingle", "4", ValueType(4, 0, 1)
Ask "T9", "VarType di adCurrency", "6", ValueType(6, 0, 1)
Ask "T10", "VarType di adNumeric", "14", ValueType(131, 19, 1)
Ask "T11", "VarType di adDBDate", "7", ValueType(133, 0, DateSerial(2000, 1, 2))
Ask "T12", "VarType di adDBTimeStamp", "7", ValueType(135, 0, DateSerial(2000, 1, 2))
Ask "T13", "VarType di un valore Null", "1", ValueType(202, 10, Null)
Ask "T14", "VarType di adBoolean", "11", ValueType(11, 0, True)

' --- over a database ---

Function Opened(location, cursorType, lockType)
    Dim rs
    Set rs = CreateObject(progId)
    rs.CursorLocation = location
    rs.Open query, connection, cursorType, lockType
    Set Opened = rs
End Function

Function CommandOfText()
    Dim rs, text
    On Error Resume Next
    Set rs = Opened(adUseClient, adOpenStatic, adLockReadOnly)
    If rs.ActiveCommand Is Nothing Then
        text = "Nothing"
    Else
        text = rs.ActiveCommand.CommandText
    End If
    CommandOfText = Outcome(text)
End Function

Function ConnectionAsText()
    Dim rs, text
    On Error Resume Next
    Set rs = Opened(adUseClient, adOpenStatic, adLockReadOnly)
    text = "" & rs.ActiveConnection
    If text <> "" Then text = "testo"
    ConnectionAsText = Outcome(text)
End Function

Function ClientCursorType()
    Dim rs, text
    On Error Resume Next
    Set rs = Opened(adUseClient, adOpenKeyset, adLockReadOnly)
    text = CStr(rs.CursorType)
    ClientCursorType = Outcome(text)
End Function

Function ServerCursor(what)
    Dim rs, text
    On Error Resume Next
    Set rs = Opened(adUseServer, adOpenForwardOnly, adLockReadOnly)
    If what = "posizione" Then text = CStr(rs.AbsolutePosition)
    If what = "ordine" Then
        rs.Sort = rs.Fields(0).Name
        text = "accettato"
    End If
    If what = "filtro" Then
        rs.Filter = "[" & rs.Fields(0).Name & "] = 'x'"
        text = "accettato"
    End If
    If what = "clone" Then
        Set text = rs.Clone
        text = "accettato"
    End If
    ServerCursor = Outcome(text)
End Function

Function RequeryWhileEditing()
    Dim rs
    On Error Resume Next
    Set rs = Opened(adUseClient, adOpenStatic, adLockOptimistic)
    rs.Fields(0).Value = "altro"
    If Err.Number = 0 Then rs.Requery
    RequeryWhileEditing = Outcome("accettato")
End Function

If connection <> "" Then
    Ask "C1", "ActiveCommand dopo un Open con un testo", query, CommandOfText()
    Ask "C2", "ActiveConnection letta come testo: la stringa di connessione", "testo", ConnectionAsText()
    Ask "C3", "CursorType con adUseClient", "3", ClientCursorType()
    Ask "C4", "Requery durante una modifica", "errore 3219", RequeryWhileEditing()
    Ask "C5", "cursore del server solo in avanti: AbsolutePosition", "1", ServerCursor("posizione")
    Ask "C6", "cursore del server solo in avanti: Sort", "accettato", ServerCursor("ordine")
    Ask "C7", "cursore del server solo in avanti: Clone", "accettato", ServerCursor("clone")
    Ask "C8", "cursore del server solo in avanti: Filter", "accettato", ServerCursor("filtro")
Else
    WScript.Echo "(senza connessione: le domande C1-C8 non sono poste)"
End If

WScript.Echo ""
WScript.Echo "Fine: " & asked & " domande, " & different & " risposte diverse."
