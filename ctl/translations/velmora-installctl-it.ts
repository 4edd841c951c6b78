<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="it">
<context>
    <name></name>
    <message id="installctl-blank-at-end">
        <source>with %1 a path must not end in a blank</source>
        <extracomment>%1 is the option --sdk</extracomment>
        <translation>con %1 un percorso non può terminare con uno spazio</translation>
    </message>
    <message id="installctl-bus-lost">
        <source>the session bus went away before the service reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>il bus di sessione è scomparso prima che il servizio comunicasse un risultato</translation>
    </message>
    <message id="installctl-bus-silent">
        <source>it has not answered within %1 s</source>
        <extracomment>The reason why there is no session bus</extracomment>
        <translation>non ha risposto entro %1 s</translation>
    </message>
    <message id="installctl-confirming">
        <source>waiting for your answer on the device&apos;s screen, then installing</source>
        <extracomment>The service asks the user in a dialog on the screen of the device, and then installs the package</extracomment>
        <translation>in attesa della risposta sullo schermo del dispositivo, poi dell’installazione</translation>
    </message>
    <message id="installctl-declined">
        <source>declined</source>
        <extracomment>The user has declined the installation</extracomment>
        <translation>rifiutato</translation>
    </message>
    <message id="installctl-failed">
        <source>failed</source>
        <extracomment>The reason follows</extracomment>
        <translation>non riuscito</translation>
    </message>
    <message id="installctl-forbidden">
        <source>forbidden</source>
        <extracomment>The device&apos;s policy forbids the installation</extracomment>
        <translation>vietato</translation>
    </message>
    <message id="installctl-goes-on">
        <source>the service goes on</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>il servizio continua</translation>
    </message>
    <message id="installctl-help-declined">
        <source>the user has declined</source>
        <extracomment>An exit status</extracomment>
        <translation>l’utente ha rifiutato</translation>
    </message>
    <message id="installctl-help-done">
        <source>done</source>
        <extracomment>An exit status</extracomment>
        <translation>fatto</translation>
    </message>
    <message id="installctl-help-failed">
        <source>something has failed</source>
        <extracomment>An exit status</extracomment>
        <translation>un’operazione non è riuscita</translation>
    </message>
    <message id="installctl-help-forbidden">
        <source>the device&apos;s policy forbids it</source>
        <extracomment>An exit status</extracomment>
        <translation>i criteri del dispositivo lo vietano</translation>
    </message>
    <message id="installctl-help-help">
        <source>print this text</source>
        <extracomment>An option</extracomment>
        <translation>mostra questo testo</translation>
    </message>
    <message id="installctl-help-interrupted">
        <source>interrupted by a signal; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>interrotto da un segnale; il servizio continua</translation>
    </message>
    <message id="installctl-help-json">
        <source>print JSON objects, one a line</source>
        <extracomment>An option</extracomment>
        <translation>mostra oggetti JSON, uno per riga</translation>
    </message>
    <message id="installctl-help-keep-user-data">
        <source>keep the data of the application</source>
        <extracomment>An option</extracomment>
        <translation>conserva i dati dell’app</translation>
    </message>
    <message id="installctl-help-launcher">
        <source>remove the application of a launcher</source>
        <extracomment>An option</extracomment>
        <translation>rimuove l’app di un lanciatore</translation>
    </message>
    <message id="installctl-help-no-wait">
        <source>do not wait for the outcome</source>
        <extracomment>An option</extracomment>
        <translation>non attende il risultato</translation>
    </message>
    <message id="installctl-help-notify">
        <source>also show desktop notifications</source>
        <extracomment>An option</extracomment>
        <translation>mostra anche notifiche sul desktop</translation>
    </message>
    <message id="installctl-help-options">
        <source>Options:</source>
        <extracomment>A heading</extracomment>
        <translation>Opzioni:</translation>
    </message>
    <message id="installctl-help-problem">
        <source>a file cannot be used; nothing was requested</source>
        <extracomment>An exit status</extracomment>
        <translation>un file non è utilizzabile; nulla è stato richiesto</translation>
    </message>
    <message id="installctl-help-quiet">
        <source>print errors only</source>
        <extracomment>An option</extracomment>
        <translation>mostra solo gli errori</translation>
    </message>
    <message id="installctl-help-sdk">
        <source>install in sdk mode, without a question if allowed</source>
        <extracomment>An option</extracomment>
        <translation>installa in modalità SDK, senza domande ove consentito</translation>
    </message>
    <message id="installctl-help-statuses">
        <source>Exit status:</source>
        <extracomment>A heading</extracomment>
        <translation>Stato di uscita:</translation>
    </message>
    <message id="installctl-help-timed-out">
        <source>the time is over; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>il tempo è scaduto; il servizio continua</translation>
    </message>
    <message id="installctl-help-timeout">
        <source>wait no longer than this, 0 for no limit</source>
        <extracomment>An option</extracomment>
        <translation>non attende oltre questo tempo, 0 per nessun limite</translation>
    </message>
    <message id="installctl-help-unavailable">
        <source>no session bus or no service</source>
        <extracomment>An exit status</extracomment>
        <translation>nessun bus di sessione o nessun servizio</translation>
    </message>
    <message id="installctl-help-unclear">
        <source>the outcome is not known, or may be that of another request</source>
        <extracomment>An exit status</extracomment>
        <translation>risultato ignoto, o forse quello di un’altra richiesta</translation>
    </message>
    <message id="installctl-help-unprivileged">
        <source>the caller may not ask for this</source>
        <extracomment>An exit status</extracomment>
        <translation>il chiamante non è autorizzato a richiederlo</translation>
    </message>
    <message id="installctl-help-unwritten">
        <source>done, but the output could not be written</source>
        <extracomment>An exit status</extracomment>
        <translation>fatto, ma non è stato possibile scrivere l’output</translation>
    </message>
    <message id="installctl-help-usage">
        <source>bad command line</source>
        <extracomment>An exit status</extracomment>
        <translation>riga di comando errata</translation>
    </message>
    <message id="installctl-help-version">
        <source>print the version</source>
        <extracomment>An option</extracomment>
        <translation>mostra la versione</translation>
    </message>
    <message id="installctl-installed">
        <source>installed</source>
        <extracomment>A package has been installed</extracomment>
        <translation>installato</translation>
    </message>
    <message id="installctl-installing">
        <source>installing</source>
        <extracomment>A package is being installed</extracomment>
        <translation>installazione in corso</translation>
    </message>
    <message id="installctl-interrupted">
        <source>interrupted</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>interrotto</translation>
    </message>
    <message id="installctl-launcher-gone">
        <source>the launcher is gone, and the service has reported nothing</source>
        <extracomment>Why an application counts as removed; a launcher is a .desktop file</extracomment>
        <translation>il lanciatore non c’è più e il servizio non ha comunicato nulla</translation>
    </message>
    <message id="installctl-launcher-there">
        <source>the service has reported nothing, and the launcher is still there</source>
        <extracomment>Why it is not known whether an application has been removed; a launcher is a .desktop file</extracomment>
        <translation>il servizio non ha comunicato nulla e il lanciatore c’è ancora</translation>
    </message>
    <message id="installctl-monitor-bus-lost">
        <source>the session bus went away</source>
        <extracomment>An error</extracomment>
        <translation>il bus di sessione è scomparso</translation>
    </message>
    <message id="installctl-no-bus">
        <source>no session bus: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>nessun bus di sessione: %1</translation>
    </message>
    <message id="installctl-nonsense">
        <source>the service reported something that cannot be understood</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>il servizio ha comunicato qualcosa di incomprensibile</translation>
    </message>
    <message id="installctl-not-regular">
        <source>not a regular file</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>non è un file regolare</translation>
    </message>
    <message id="installctl-not-started">
        <source>it has not started within %1 s</source>
        <extracomment>The reason why a service is not available</extracomment>
        <translation>non si è avviato entro %1 s</translation>
    </message>
    <message id="installctl-not-utf8">
        <source>the path is not UTF-8, so the service cannot be told</source>
        <extracomment>The path of a file</extracomment>
        <translation>il percorso non è in UTF-8, quindi non può essere comunicato al servizio</translation>
    </message>
    <message id="installctl-notification-installed">
        <source>Installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Installato</translation>
    </message>
    <message id="installctl-notification-installing">
        <source>Installing…</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Installazione in corso…</translation>
    </message>
    <message id="installctl-notification-not-installed">
        <source>Not installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Non installato</translation>
    </message>
    <message id="installctl-notification-unknown">
        <source>Outcome not known</source>
        <extracomment>Title of a notification: nobody knows how the installation has ended or will end</extracomment>
        <translation>Risultato ignoto</translation>
    </message>
    <message id="installctl-reading">
        <source>reading</source>
        <extracomment>The service reads a package file</extracomment>
        <translation>lettura in corso</translation>
    </message>
    <message id="installctl-removed">
        <source>removed</source>
        <extracomment>A package has been removed</extracomment>
        <translation>rimosso</translation>
    </message>
    <message id="installctl-removing">
        <source>removing</source>
        <extracomment>A package is being removed</extracomment>
        <translation>rimozione in corso</translation>
    </message>
    <message id="installctl-removing-of">
        <source>removing %1 of %2</source>
        <extracomment>A package is being removed; %1 and %2 are numbers</extracomment>
        <translation>rimozione in corso, %1 di %2</translation>
    </message>
    <message id="installctl-requested">
        <source>requested</source>
        <extracomment>The service has taken a request</extracomment>
        <translation>richiesto</translation>
    </message>
    <message id="installctl-see-help">
        <source>see %1</source>
        <extracomment>%1 is a command</extracomment>
        <translation>vedere %1</translation>
    </message>
    <message id="installctl-service-ended">
        <source>the service ended before it reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>il servizio è terminato prima di comunicare un risultato</translation>
    </message>
    <message id="installctl-service-rests">
        <source>the service does not run</source>
        <extracomment>The service is not on the bus</extracomment>
        <translation>il servizio non è in esecuzione</translation>
    </message>
    <message id="installctl-service-runs">
        <source>the service runs</source>
        <extracomment>The service is on the bus</extracomment>
        <translation>il servizio è in esecuzione</translation>
    </message>
    <message id="installctl-timeout">
        <source>timeout</source>
        <extracomment>The time is over</extracomment>
        <translation>tempo scaduto</translation>
    </message>
    <message id="installctl-unanswered">
        <source>no answer within %1 s; the service may go on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>nessuna risposta entro %1 s; il servizio forse continua</translation>
    </message>
    <message id="installctl-unavailable">
        <source>the service is not available: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>il servizio non è disponibile: %1</translation>
    </message>
    <message id="installctl-uncertain">
        <source>%1 (may be the outcome of another request)</source>
        <extracomment>%1 is the outcome of a request</extracomment>
        <translation>%1 (forse è il risultato di un’altra richiesta)</translation>
    </message>
    <message id="installctl-unclear">
        <source>unclear</source>
        <extracomment>It is not known how the request has ended</extracomment>
        <translation>esito incerto</translation>
    </message>
    <message id="installctl-unfinished">
        <source>no outcome within %1 s; the service goes on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>nessun risultato entro %1 s; il servizio continua</translation>
    </message>
    <message id="installctl-unprivileged">
        <source>unprivileged</source>
        <extracomment>The user may not ask for this</extracomment>
        <translation>non autorizzato</translation>
    </message>
    <message id="installctl-unrequested">
        <source>not requested: %1 of %2</source>
        <extracomment>%1 and %2 are numbers of files or packages</extracomment>
        <translation>non richiesti: %1 di %2</translation>
    </message>
    <message id="installctl-unwritten">
        <source>the output could not be written</source>
        <extracomment>An error</extracomment>
        <translation>non è stato possibile scrivere l’output</translation>
    </message>
    <message id="installctl-usage-clash">
        <source>%1 does not go with %2</source>
        <extracomment>%1 is an option such as --sdk or another word of the command line, %2 an option or a command</extracomment>
        <translation>%1 non è compatibile con %2</translation>
    </message>
    <message id="installctl-usage-marked-name">
        <source>a name must not begin with the character %1</source>
        <extracomment>%1 is the code of a character</extracomment>
        <translation>un nome non può iniziare con il carattere %1</translation>
    </message>
    <message id="installctl-usage-no-command">
        <source>a command is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>manca un comando</translation>
    </message>
    <message id="installctl-usage-no-subject">
        <source>a file or a name is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>manca un file o un nome</translation>
    </message>
    <message id="installctl-usage-seconds">
        <source>%1 takes a whole number from 0 to %2</source>
        <extracomment>%1 is the option --timeout, %2 a number</extracomment>
        <translation>%1 richiede un numero intero da 0 a %2</translation>
    </message>
    <message id="installctl-usage-too-many-names">
        <source>with %1 no more than %2 names can be given</source>
        <extracomment>%1 is the option --no-wait, %2 a number</extracomment>
        <translation>con %1 non si possono indicare più di %2 nomi</translation>
    </message>
    <message id="installctl-usage-unknown-command">
        <source>there is no command %1</source>
        <extracomment>%1 is the word that was given</extracomment>
        <translation>il comando %1 non esiste</translation>
    </message>
    <message id="installctl-usage-wrong-name">
        <source>a name is empty or not UTF-8</source>
        <extracomment>An error in a command line</extracomment>
        <translation>un nome è vuoto o non è in UTF-8</translation>
    </message>
    <message id="installctl-waiting">
        <source>waiting for the service</source>
        <extracomment>The service has not answered, or does something else at the moment</extracomment>
        <translation>in attesa del servizio</translation>
    </message>
    <message id="installctl-wrong-url">
        <source>not a URL of a file on this device</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>non è l’URL di un file su questo dispositivo</translation>
    </message>
</context>
</TS>
