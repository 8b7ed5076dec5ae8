#include "platform/errors.h"

using namespace Qt::StringLiterals;

ErrorState Err;

QString errors::description(qint32 number) {
    switch (number) {
        case invalidCall:
            return u"Neplatné volání procedury nebo neplatný argument."_s;
        case overflow:
            return u"Číslo je mimo povolený rozsah."_s;
        case outOfMemory:
            return u"Nedostatek paměti."_s;
        case subscriptOutOfRange:
            return u"Index je mimo rozsah."_s;
        case divisionByZero:
            return u"Dělení nulou."_s;
        case typeMismatch:
            return u"Hodnota není správného typu."_s;
        case fileNotFound:
            return u"Soubor nebyl nalezen."_s;
        case diskFull:
            return u"Disk je plný."_s;
        case endOfFile:
            return u"Soubor skončil dříve, než se čekalo."_s;
        case pathAccess:
            return u"K cestě nebo souboru nelze přistupovat."_s;
        case objectNotSet:
            return u"Objekt není nastaven."_s;
        case invalidNull:
            return u"Neplatné použití prázdné hodnoty (Null)."_s;
        case noSuchControl:
            return u"Prvek pole ovládacích prvků neexistuje."_s;
        case invalidPicture:
            return u"Soubor není platný obrázek."_s;
        case printer:
            return u"Tiskárna není k dispozici nebo ohlásila chybu."_s;
        case invalidPropertyValue:
            return u"Neplatná hodnota vlastnosti."_s;
        case duplicateKey:
            return u"Tento klíč již patří jinému prvku seznamu."_s;
        case noCurrentRecord:
            return u"Není k dispozici žádný aktuální záznam."_s;
        case operationNotAllowed:
            return u"Operace není v tomto stavu povolena."_s;
        case itemNotFound:
            return u"Položka toho jména neexistuje."_s;
        case objectClosed:
            return u"Operace není povolena, objekt je zavřený."_s;
        case objectOpen:
            return u"Operace není povolena, objekt je již otevřený."_s;
        case cannotCreateObject:
            return u"Součást programu chybí nebo ji nelze načíst."_s;
        case elementNotFound:
            return u"Prvek seznamu nebyl nalezen."_s;
        case database:
            return u"Databáze ohlásila chybu."_s;
        case databaseReadOnly:
            return u"Databáze je pouze pro čtení."_s;
        case databasePassword:
            return u"Heslo k databázi není správné."_s;
        case databaseSql:
            return u"Dotaz nelze provést."_s;
        case databaseConstraint:
            return u"Záznam odporuje pravidlům databáze."_s;
        case rowGone:
            return u"Záznam byl mezitím odstraněn."_s;
        default:
            return u"Chyba aplikace."_s;
    }
}

RuntimeError::RuntimeError(qint32 number) : RuntimeError(number, errors::description(number)) {}

RuntimeError::RuntimeError(qint32 number, QString description)
    : number_(number),
      description_(std::move(description)),
      what_(QByteArray::number(number) + ": " + description_.toUtf8()) {}

void ErrorState::Clear() noexcept {
    number_ = 0;
    description_.clear();
}

void ErrorState::set(const RuntimeError& failure) {
    number_ = failure.number();
    description_ = failure.description();
}
