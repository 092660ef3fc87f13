/* Everything a host of NorvelRicerca needs. C++ hosts get the public class Ricerca, the values it
 * takes and the recordsets they pass; C hosts get the functions of NorvelRicercaC.h. */
#ifndef NORVELRICERCA_NORVELRICERCA_H
#define NORVELRICERCA_NORVELRICERCA_H

#include "component/NorvelRicercaC.h"

#ifdef __cplusplus
#include "component/DatiHost.h"
#include "component/Ricerca.h"
#include "component/TabellaMembri.h"
#include "component/Versione.h"
#include "platform/adodb/Constants.h"
#include "platform/adodb/Recordset.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/MessageBox.h"
#include "platform/runtime/OwnerQueue.h"
#include "platform/runtime/Variant.h"
#endif

#endif
