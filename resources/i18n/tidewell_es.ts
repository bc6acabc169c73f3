<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES" sourcelanguage="en_US">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About Tidewell</source>
        <translation>Acerca de Tidewell</translation>
    </message>
    <message>
        <source>Tidewell</source>
        <translation>Tidewell</translation>
    </message>
    <message>
        <source>&lt;p style=&apos;margin-top:0&apos;&gt;&lt;b&gt;Version %1&lt;/b&gt;&lt;br&gt;Continuous broadcast logging and archiving, part of the %2 suite.&lt;/p&gt;</source>
        <translation>&lt;p style=&apos;margin-top:0&apos;&gt;&lt;b&gt;Versión %1&lt;/b&gt;&lt;br&gt;Registro continuo y archivo de emisiones, parte de la suite %2.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;It records one source around the clock and finds any moment again. Free software under the MIT license.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Graba una fuente las 24 horas y permite volver a cualquier momento. Software libre con licencia MIT.&lt;/p&gt;</translation>
    </message>
</context>
<context>
    <name>AlarmBoard</name>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 min %2 s</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 h %2 min</translation>
    </message>
    <message>
        <source>Back to normal after %1: %2</source>
        <translation>Normalizado tras %1: %2</translation>
    </message>
    <message>
        <source>No audio</source>
        <translation>Sin audio</translation>
    </message>
    <message>
        <source>Silence</source>
        <translation>Silencio</translation>
    </message>
    <message>
        <source>One channel dead</source>
        <translation>Un canal sin señal</translation>
    </message>
    <message>
        <source>Level does not move</source>
        <translation>El nivel no se mueve</translation>
    </message>
    <message>
        <source>Not recording</source>
        <translation>Sin grabar</translation>
    </message>
    <message>
        <source>Cannot write</source>
        <translation>No se puede escribir</translation>
    </message>
    <message>
        <source>Disk almost full</source>
        <translation>Disco casi lleno</translation>
    </message>
    <message>
        <source>Clock wrong</source>
        <translation>Hora incorrecta</translation>
    </message>
    <message>
        <source>Second copy behind</source>
        <translation>Segunda copia atrasada</translation>
    </message>
    <message>
        <source>Trigger lost</source>
        <translation>Disparador perdido</translation>
    </message>
    <message>
        <source>Restarted after a crash</source>
        <translation>Reiniciado tras un fallo</translation>
    </message>
    <message>
        <source>No audio arrives from the source. Check the device, its cable and the sound server.</source>
        <translation>No llega audio de la fuente. Compruebe el dispositivo, su cable y el servidor de sonido.</translation>
    </message>
    <message>
        <source>The recorded source is silent.</source>
        <translation>La fuente que se graba está en silencio.</translation>
    </message>
    <message>
        <source>One of the two channels is silent while the other is not. Check the cables.</source>
        <translation>Uno de los dos canales está en silencio y el otro no. Compruebe los cables.</translation>
    </message>
    <message>
        <source>The level does not move: this may be a test tone, hum or a frozen source.</source>
        <translation>El nivel no se mueve: puede ser un tono de prueba, un zumbido o una fuente bloqueada.</translation>
    </message>
    <message>
        <source>A recording is wanted, but nothing is being recorded.</source>
        <translation>Se quiere grabar, pero no se graba nada.</translation>
    </message>
    <message>
        <source>The recording cannot be written. Check the disk.</source>
        <translation>No se puede escribir la grabación. Compruebe el disco.</translation>
    </message>
    <message>
        <source>The disk is almost full.</source>
        <translation>El disco está casi lleno.</translation>
    </message>
    <message>
        <source>The computer&apos;s clock is wrong.</source>
        <translation>La hora del equipo es incorrecta.</translation>
    </message>
    <message>
        <source>The second copy is behind. Check the folder that the recordings are copied to.</source>
        <translation>La segunda copia va atrasada. Compruebe la carpeta en la que se copian las grabaciones.</translation>
    </message>
    <message>
        <source>The trigger input is lost. Check its cable.</source>
        <translation>Se ha perdido la entrada del disparador. Compruebe su cable.</translation>
    </message>
    <message>
        <source>The program has crashed and was started again.</source>
        <translation>El programa falló y se inició de nuevo.</translation>
    </message>
</context>
<context>
    <name>AlarmOutbox</name>
    <message numerus="yes">
        <source>%n alarm(s) could not be sent for a day and are given up.</source>
        <translation>
            <numerusform>No se pudo enviar %n alarma durante un día y se descarta.</numerusform>
            <numerusform>No se pudieron enviar %n alarmas durante un día y se descartan.</numerusform>
        </translation>
    </message>
    <message>
        <source>Tidewell</source>
        <translation>Tidewell</translation>
    </message>
    <message>
        <source>This is Tidewell on the computer %1.</source>
        <translation>Esto es Tidewell en el equipo %1.</translation>
    </message>
    <message numerus="yes">
        <source>%n alarm(s) sent by mail</source>
        <translation>
            <numerusform>%n alarma enviada por correo</numerusform>
            <numerusform>%n alarmas enviadas por correo</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n alarm(s) sent to the web address</source>
        <translation>
            <numerusform>%n alarma enviada a la dirección web</numerusform>
            <numerusform>%n alarmas enviadas a la dirección web</numerusform>
        </translation>
    </message>
    <message>
        <source>An alarm could not be mailed and is tried again: %1</source>
        <translation>No se pudo enviar una alarma por correo y se intentará de nuevo: %1</translation>
    </message>
    <message>
        <source>An alarm could not be sent to the web address and is tried again: %1</source>
        <translation>No se pudo enviar una alarma a la dirección web y se intentará de nuevo: %1</translation>
    </message>
</context>
<context>
    <name>AlarmQueue</name>
    <message numerus="yes">
        <source>%n earlier one(s) found no room.</source>
        <translation>
            <numerusform>%n anterior no tuvo sitio.</numerusform>
            <numerusform>%n anteriores no tuvieron sitio.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 alarms between %2 and %3</source>
        <translation>%1 alarmas entre %2 y %3</translation>
    </message>
</context>
<context>
    <name>AlarmsTab</name>
    <message>
        <source>Alarms</source>
        <translation>Alarmas</translation>
    </message>
    <message>
        <source>Tell me of</source>
        <translation>Avisarme de</translation>
    </message>
    <message>
        <source>if it lasts</source>
        <translation>si dura</translation>
    </message>
    <message>
        <source> sec</source>
        <translation> s</translation>
    </message>
    <message>
        <source>%1: if it lasts</source>
        <translation>%1: si dura</translation>
    </message>
    <message>
        <source> h</source>
        <translation> h</translation>
    </message>
    <message>
        <source>The disk is almost full when it lasts for less than</source>
        <translation>El disco está casi lleno si alcanza para menos de</translation>
    </message>
    <message>
        <source>By mail, with the server and the address of the tab Alerts</source>
        <translation>Por correo, con el servidor y la dirección de la pestaña Alertas</translation>
    </message>
    <message>
        <source>Each alarm is sent there as JSON by HTTP POST, with the status of this station</source>
        <translation>Cada alarma se envía allí como JSON por HTTP POST, con el estado de esta estación</translation>
    </message>
    <message>
        <source>This address is called once a minute while audio is written: who watches it notices a dead computer too</source>
        <translation>Se llama a esta dirección una vez por minuto mientras se escribe audio: quien la vigila nota también un equipo caído</translation>
    </message>
    <message>
        <source>How</source>
        <translation>Cómo</translation>
    </message>
    <message>
        <source>To the web address:</source>
        <translation>A la dirección web:</translation>
    </message>
    <message>
        <source>Heartbeat address:</source>
        <translation>Dirección de señal de vida:</translation>
    </message>
</context>
<context>
    <name>AlertsTab</name>
    <message>
        <source>Use TLS</source>
        <translation>Usar TLS</translation>
    </message>
    <message>
        <source>&amp;Test</source>
        <translation>&amp;Probar</translation>
    </message>
    <message>
        <source>Send silence notifications</source>
        <translation>Enviar avisos de silencio</translation>
    </message>
    <message>
        <source> sec</source>
        <translation> s</translation>
    </message>
    <message>
        <source> dB</source>
        <translation> dB</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Alertas</translation>
    </message>
    <message>
        <source>Silence duration:</source>
        <translation>Duración del silencio:</translation>
    </message>
    <message>
        <source>Threshold:</source>
        <translation>Umbral:</translation>
    </message>
    <message>
        <source>Email address:</source>
        <translation>Dirección de correo:</translation>
    </message>
    <message>
        <source>Subject:</source>
        <translation>Asunto:</translation>
    </message>
    <message>
        <source>SMTP server:</source>
        <translation>Servidor SMTP:</translation>
    </message>
    <message>
        <source>Port:</source>
        <translation>Puerto:</translation>
    </message>
    <message>
        <source>User name:</source>
        <translation>Usuario:</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Contraseña:</translation>
    </message>
    <message>
        <source>From email:</source>
        <translation>Correo del remitente:</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Prueba</translation>
    </message>
    <message>
        <source>Enter at least an SMTP server and a recipient address.</source>
        <translation>Indique al menos un servidor SMTP y una dirección de destino.</translation>
    </message>
    <message>
        <source>Tidewell test message</source>
        <translation>Mensaje de prueba de Tidewell</translation>
    </message>
    <message>
        <source>This is a test message from Tidewell.
If you received it, silence notifications are configured correctly.</source>
        <translation>Este es un mensaje de prueba de Tidewell.
Si lo ha recibido, los avisos de silencio están bien configurados.</translation>
    </message>
    <message>
        <source>Test failed</source>
        <translation>Prueba fallida</translation>
    </message>
</context>
<context>
    <name>ArchiveCopy</name>
    <message>
        <source>Choose the folder for the second copy.</source>
        <translation>Elija la carpeta de la segunda copia.</translation>
    </message>
    <message>
        <source>The folder of the second copy must be an absolute path.</source>
        <translation>La carpeta de la segunda copia debe ser una ruta absoluta.</translation>
    </message>
    <message>
        <source>The second copy must be outside the recordings folder.</source>
        <translation>La segunda copia debe estar fuera de la carpeta de grabaciones.</translation>
    </message>
    <message>
        <source>The second copy waits: the folder %1 does not answer. Recording goes on; the copy will catch up.</source>
        <translation>La segunda copia espera: la carpeta %1 no responde. La grabación continúa; la copia se pondrá al día.</translation>
    </message>
    <message>
        <source>The second copy waits: the folder %1 is not there. Recording goes on; the copy will catch up.</source>
        <translation>La segunda copia espera: la carpeta %1 no está. La grabación continúa; la copia se pondrá al día.</translation>
    </message>
    <message>
        <source>The second copy waits: the copies made so far are not in the folder %1. Is its drive connected? To begin anew there, switch the second copy off and on again.</source>
        <translation>La segunda copia espera: las copias hechas hasta ahora no están en la carpeta %1. ¿Está conectada su unidad? Para empezar allí de nuevo, desactive la segunda copia y vuelva a activarla.</translation>
    </message>
    <message>
        <source>The second copy waits: the folder %1 cannot be used (%2). Recording goes on; the copy will catch up.</source>
        <translation>La segunda copia espera: la carpeta %1 no se puede usar (%2). La grabación continúa; la copia se pondrá al día.</translation>
    </message>
    <message>
        <source>%1 in the second copy has changed. It is left alone, and another copy is made.</source>
        <translation>%1 ha cambiado en la segunda copia. No se toca y se hace otra copia.</translation>
    </message>
    <message>
        <source>%1 cannot be read for the second copy: %2</source>
        <translation>No se puede leer %1 para la segunda copia: %2</translation>
    </message>
    <message>
        <source>The second copy waits: what was written into the folder %1 comes back changed. Its disk may be failing; look at it, or choose another.</source>
        <translation>La segunda copia espera: lo que se escribió en la carpeta %1 se lee cambiado. Puede que su disco esté fallando; revíselo o elija otro.</translation>
    </message>
    <message>
        <source>The second copy waits: the folder %1 is full. Recording goes on; the copy will catch up when there is room. Let fewer days of it be kept, or choose another folder.</source>
        <translation>La segunda copia espera: la carpeta %1 está llena. La grabación continúa; la copia se pondrá al día cuando haya espacio. Conserve menos días de copias o elija otra carpeta.</translation>
    </message>
    <message>
        <source>The second copy waits: the folder %1 takes no file (%2). Recording goes on; the copy will catch up.</source>
        <translation>La segunda copia espera: la carpeta %1 no admite archivos (%2). La grabación continúa; la copia se pondrá al día.</translation>
    </message>
    <message numerus="yes">
        <source>Deleted %n old file(s) from the second copy</source>
        <translation>
            <numerusform>Se eliminó %n archivo antiguo de la segunda copia</numerusform>
            <numerusform>Se eliminaron %n archivos antiguos de la segunda copia</numerusform>
        </translation>
    </message>
    <message>
        <source>The second copy goes on after %1; files behind: %2</source>
        <translation>La segunda copia continúa después de %1; archivos pendientes: %2</translation>
    </message>
</context>
<context>
    <name>ArchiveDialog</name>
    <message>
        <source>Archive</source>
        <translation>Archivo sonoro</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Grabaciones</translation>
    </message>
    <message>
        <source>Find by time</source>
        <translation>Buscar por hora</translation>
    </message>
    <message>
        <source>Custom range</source>
        <translation>Intervalo personalizado</translation>
    </message>
    <message>
        <source>Last hour</source>
        <translation>Última hora</translation>
    </message>
    <message>
        <source>Last 6 hours</source>
        <translation>Últimas 6 horas</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>Ayer</translation>
    </message>
    <message>
        <source>Last 7 days</source>
        <translation>Últimos 7 días</translation>
    </message>
    <message>
        <source>Time range</source>
        <translation>Intervalo de tiempo</translation>
    </message>
    <message>
        <source>&amp;Show matches</source>
        <translation>Mostrar &amp;coincidencias</translation>
    </message>
    <message>
        <source>Show &amp;all</source>
        <translation>Mostrar &amp;todas</translation>
    </message>
    <message>
        <source>&amp;Play from start time</source>
        <translation>&amp;Reproducir desde la hora inicial</translation>
    </message>
    <message>
        <source>Finds the recording covering the From time and starts playback at exactly that moment.</source>
        <translation>Busca la grabación que incluye la hora de «Desde» e inicia la reproducción exactamente en ese momento.</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>Desde:</translation>
    </message>
    <message>
        <source>To:</source>
        <translation>Hasta:</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausa</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Posición</translation>
    </message>
    <message>
        <source>Position and length</source>
        <translation>Posición y duración</translation>
    </message>
    <message>
        <source>When this was recorded</source>
        <translation>Cuándo se grabó</translation>
    </message>
    <message>
        <source>Nothing was recorded between %1 and %2.</source>
        <translation>No hay grabaciones en este intervalo: %1 - %2.</translation>
    </message>
    <message>
        <source>%1 of %2 recordings</source>
        <translation>Grabaciones: %1 de %2</translation>
    </message>
    <message>
        <source>%1 recordings</source>
        <translation>Grabaciones: %1</translation>
    </message>
    <message>
        <source>No recording covers %1.

Either nothing was being logged then, or the recording has already been deleted by the retention policy.</source>
        <translation>Ninguna grabación incluye este momento: %1.

O bien no se estaba registrando nada entonces, o bien la grabación ya se eliminó según la política de conservación.</translation>
    </message>
    <message>
        <source>The file no longer exists:
%1</source>
        <translation>El archivo ya no existe:
%1</translation>
    </message>
    <message>
        <source>&amp;Play</source>
        <translation>&amp;Reproducir</translation>
    </message>
    <message>
        <source>Show in &amp;folder</source>
        <translation>Mostrar en la &amp;carpeta</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Eliminar</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n selected recording(s) from disk?</source>
        <translation>
            <numerusform>¿Eliminar del disco %n grabación seleccionada?</numerusform>
            <numerusform>¿Eliminar del disco %n grabaciones seleccionadas?</numerusform>
        </translation>
    </message>
    <message>
        <source>The original is missing or damaged. This is the second copy: %1</source>
        <translation>El original falta o está dañado. Esta es la segunda copia: %1</translation>
    </message>
</context>
<context>
    <name>ArchiveModel</name>
    <message>
        <source>Date</source>
        <translation>Fecha</translation>
    </message>
    <message>
        <source>Started</source>
        <translation>Inicio</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Fin</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Duración</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Ruta</translation>
    </message>
</context>
<context>
    <name>AttemptLog</name>
    <message>
        <source>%1 (tried %2 times since %3)</source>
        <translation>%1 (%2 intentos desde las %3)</translation>
    </message>
</context>
<context>
    <name>CaptureDiagnostics</name>
    <message>
        <source>--- Capture diagnostics ---</source>
        <translation>--- Diagnóstico de captura ---</translation>
    </message>
    <message>
        <source>Source: %1</source>
        <translation>Fuente: %1</translation>
    </message>
    <message>
        <source>Format: %1 Hz, %2 channel(s)</source>
        <translation>Formato: %1 Hz, %2 canal(es)</translation>
    </message>
    <message>
        <source>Audio buffers: %1 in %2 s (avg %3 bytes = %4 ms), largest gap %5 ms</source>
        <translation>Búferes de audio: %1 en %2 s (media de %3 bytes = %4 ms), intervalo máximo %5 ms</translation>
    </message>
    <message>
        <source>Audio received: %1 %% of real time</source>
        <translation>Audio recibido: %1 %% del tiempo real</translation>
    </message>
    <message>
        <source>Meter updates: %1 (%2 per second), largest gap %3 ms</source>
        <translation>Lecturas del medidor: %1 (%2 por segundo), intervalo máximo %3 ms</translation>
    </message>
    <message>
        <source>Level range: %1 to %2 dBFS</source>
        <translation>Margen de nivel: de %1 a %2 dBFS</translation>
    </message>
    <message>
        <source>Level range: no updates received</source>
        <translation>Margen de nivel: no se recibieron lecturas</translation>
    </message>
    <message>
        <source>--- end ---</source>
        <translation>--- fin ---</translation>
    </message>
    <message>
        <source>Capture Diagnostics</source>
        <translation>Diagnóstico de captura</translation>
    </message>
    <message>
        <source>Start recording first - diagnostics measure the live capture path, which only runs while recording.</source>
        <translation>Inicie primero la grabación: el diagnóstico mide la captura en vivo, que solo funciona mientras se graba.</translation>
    </message>
</context>
<context>
    <name>ChannelMenu</name>
    <message>
        <source>(first channel)</source>
        <translation>(primer canal)</translation>
    </message>
    <message>
        <source>&amp;Channels</source>
        <translation>&amp;Canales</translation>
    </message>
</context>
<context>
    <name>ClientCommands</name>
    <message>
        <source>%1 is not running.</source>
        <translation>%1 no está en marcha.</translation>
    </message>
    <message>
        <source>The recording could not be started. The log of the program says why.</source>
        <translation>No se pudo iniciar la grabación. El registro del programa dice por qué.</translation>
    </message>
    <message>
        <source>There is no setting &quot;%1&quot;. The settings are listed by --get.</source>
        <translation>No hay ningún ajuste «%1». --get los muestra todos.</translation>
    </message>
    <message>
        <source>%1 is a secret and is not shown.</source>
        <translation>%1 es secreto y no se muestra.</translation>
    </message>
    <message>
        <source>%1 is running, but does not answer.</source>
        <translation>%1 está en marcha, pero no responde.</translation>
    </message>
    <message>
        <source>The standard input holds no line for %1.</source>
        <translation>La entrada estándar no tiene ninguna línea para %1.</translation>
    </message>
</context>
<context>
    <name>CloseDialog</name>
    <message>
        <source>Remember my choice and stop asking</source>
        <translation>Recordar mi elección y no volver a preguntar</translation>
    </message>
    <message>
        <source>Close Tidewell</source>
        <translation>Cerrar Tidewell</translation>
    </message>
    <message>
        <source>&lt;b&gt;What would you like to do?&lt;/b&gt;&lt;p&gt;Tidewell can keep running in the notification area so logging continues, or close completely.&lt;/p&gt;</source>
        <translation>&lt;b&gt;¿Qué desea hacer?&lt;/b&gt;&lt;p&gt;Tidewell puede seguir en el área de notificación para que el registro continúe, o cerrarse por completo.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;Exit Tidewell?&lt;/b&gt;</source>
        <translation>&lt;b&gt;¿Salir de Tidewell?&lt;/b&gt;</translation>
    </message>
    <message>
        <source>&lt;p style=&apos;color:#c0392b&apos;&gt;&lt;b&gt;A recording is in progress.&lt;/b&gt; Exiting will stop it.&lt;/p&gt;</source>
        <translation>&lt;p style=&apos;color:#c0392b&apos;&gt;&lt;b&gt;Hay una grabación en curso.&lt;/b&gt; Si sale, se detendrá.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&amp;Minimise to Tray</source>
        <translation>&amp;Minimizar a la bandeja</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Cancelar</translation>
    </message>
    <message>
        <source>Close button set to: %1</source>
        <translation>Acción del botón Cerrar: %1</translation>
    </message>
    <message>
        <source>minimise to tray</source>
        <translation>minimización a la bandeja</translation>
    </message>
    <message>
        <source>exit</source>
        <translation>salida del programa</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Records without a window, as a service.</source>
        <translation>Graba sin ventana, como servicio.</translation>
    </message>
    <message>
        <source>Prints what the running channel does, as JSON. The exit status is 0 while it records, 1 while it is idle, 2 when it does not run.</source>
        <translation>Muestra en JSON lo que hace el canal en marcha. El estado de salida es 0 mientras graba, 1 en espera y 2 si no está en marcha.</translation>
    </message>
    <message>
        <source>Starts a recording in the running channel.</source>
        <translation>Inicia una grabación en el canal en marcha.</translation>
    </message>
    <message>
        <source>Stops it.</source>
        <translation>La detiene.</translation>
    </message>
    <message>
        <source>Ends the running channel.</source>
        <translation>Termina el canal en marcha.</translation>
    </message>
    <message>
        <source>Changes a setting, also of the running channel. May be given several times. A password is read from the standard input: --set alerts/smtpPass=-</source>
        <translation>Cambia un ajuste, también del canal en marcha. Puede repetirse. Una contraseña se lee de la entrada estándar: --set alerts/smtpPass=-</translation>
    </message>
    <message>
        <source>Prints the setting named behind it, or all settings.</source>
        <translation>Muestra el ajuste que se indica detrás, o todos.</translation>
    </message>
    <message>
        <source>Prints what can be recorded and what can trigger, with the settings for it.</source>
        <translation>Muestra qué se puede grabar y qué puede activar la grabación, con los ajustes para ello.</translation>
    </message>
    <message>
        <source>Writes journal, settings without passwords, versions and diagnostics into a ZIP file.</source>
        <translation>Escribe el diario, los ajustes sin contraseñas, las versiones y los diagnósticos en un archivo ZIP.</translation>
    </message>
    <message>
        <source>Prints this text.</source>
        <translation>Muestra este texto.</translation>
    </message>
    <message>
        <source>Prints the version.</source>
        <translation>Muestra la versión.</translation>
    </message>
    <message>
        <source>The channel that all this is about: letters, digits, - and _. Each channel has its own settings and recordings.</source>
        <translation>El canal del que se trata: letras, cifras, - y _. Cada canal tiene sus propios ajustes y grabaciones.</translation>
    </message>
    <message>
        <source>Continuous broadcast logging and archiving</source>
        <translation>Registro y archivo continuo de emisiones</translation>
    </message>
    <message>
        <source>--set needs KEY=VALUE.</source>
        <translation>--set necesita CLAVE=VALOR.</translation>
    </message>
    <message>
        <source>%1 is a secret and is read from the standard input: --set %1=-</source>
        <translation>%1 es secreto y se lee de la entrada estándar: --set %1=-</translation>
    </message>
    <message>
        <source>Only one of these options can be given at a time; --help lists them.</source>
        <translation>Solo se puede dar una de estas opciones a la vez; --help las muestra.</translation>
    </message>
    <message>
        <source>The name of a channel has 1 to %1 letters, digits, - and _.</source>
        <translation>El nombre de un canal tiene de 1 a %1 letras, cifras, - y _.</translation>
    </message>
    <message>
        <source>--support needs the name of a file.</source>
        <translation>--support necesita el nombre de un archivo.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no option; --help lists them.</source>
        <translation>«%1» no es una opción; --help las muestra.</translation>
    </message>
</context>
<context>
    <name>ControlBar</name>
    <message>
        <source>■ &amp;Stop</source>
        <translation>■ &amp;Detener</translation>
    </message>
    <message>
        <source>A&amp;uto</source>
        <translation>A&amp;uto</translation>
    </message>
    <message>
        <source>● &amp;Record</source>
        <translation>● &amp;Grabar</translation>
    </message>
    <message>
        <source>&amp;Record</source>
        <translation>&amp;Grabar</translation>
    </message>
    <message>
        <source>Record in the hours that are marked in the scheduler</source>
        <translation>Graba en las horas marcadas en el programador</translation>
    </message>
    <message>
        <source>Sc&amp;heduler</source>
        <translation>&amp;Programador</translation>
    </message>
    <message>
        <source>&amp;Archive</source>
        <translation>&amp;Archivo sonoro</translation>
    </message>
</context>
<context>
    <name>DeviceListing</name>
    <message>
        <source>Input devices</source>
        <translation>Dispositivos de entrada</translation>
    </message>
    <message>
        <source>%1 (channels: %2)</source>
        <translation>%1 (canales: %2)</translation>
    </message>
    <message>
        <source>Playback devices</source>
        <translation>Dispositivos de reproducción</translation>
    </message>
    <message>
        <source>Serial ports</source>
        <translation>Puertos serie</translation>
    </message>
    <message>
        <source>MIDI inputs</source>
        <translation>Entradas MIDI</translation>
    </message>
    <message>
        <source>none found</source>
        <translation>no se encontró ninguno</translation>
    </message>
    <message>
        <source>Below each device stand the settings that choose it. Their values are percent-encoded: %20 is a space.</source>
        <translation>Debajo de cada dispositivo están los ajustes que lo eligen. Sus valores usan codificación porcentual: %20 es un espacio.</translation>
    </message>
    <message>
        <source>An empty capture/deviceId or capture/playbackId is the system&apos;s default device.</source>
        <translation>Un capture/deviceId o capture/playbackId vacío es el dispositivo predeterminado del sistema.</translation>
    </message>
    <message>
        <source>Of an input device, capture/firstChannel=3 capture/channelCount=2 records channels 3 and 4 alone.</source>
        <translation>De un dispositivo de entrada, capture/firstChannel=3 capture/channelCount=2 graba solo los canales 3 y 4.</translation>
    </message>
    <message>
        <source>For text commands on a serial port, set trigger/kind=2 in place of 1.</source>
        <translation>Para comandos de texto en un puerto serie, ponga trigger/kind=2 en lugar de 1.</translation>
    </message>
</context>
<context>
    <name>FfmpegEncoder</name>
    <message>
        <source>ffmpeg ended early (exit code %1).</source>
        <translation>ffmpeg terminó antes de tiempo (código de salida %1).</translation>
    </message>
    <message>
        <source>ffmpeg was not found on this system.</source>
        <translation>No se encontró ffmpeg en este sistema.</translation>
    </message>
    <message>
        <source>ffmpeg could not be started: %1</source>
        <translation>No se pudo iniciar ffmpeg: %1</translation>
    </message>
    <message>
        <source>ffmpeg does not keep up with the recording.</source>
        <translation>ffmpeg no puede seguir el ritmo de la grabación.</translation>
    </message>
    <message>
        <source>ffmpeg did not finish the file in time.</source>
        <translation>ffmpeg no terminó el archivo a tiempo.</translation>
    </message>
</context>
<context>
    <name>FolderLock</name>
    <message>
        <source>Another Tidewell on the computer %1 records into the folder %2. Choose another folder.</source>
        <translation>Otro Tidewell en el equipo %1 graba en la carpeta %2. Elija otra carpeta.</translation>
    </message>
    <message>
        <source>The Tidewell channel %1 on the computer %2 records into the folder %3. Choose another folder.</source>
        <translation>El canal %1 de Tidewell en el equipo %2 graba en la carpeta %3. Elija otra carpeta.</translation>
    </message>
    <message>
        <source>If that computer is out of use, delete the file %1.</source>
        <translation>Si ese equipo ya no se usa, borre el archivo %1.</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Updates</source>
        <translation>Actualizaciones</translation>
    </message>
    <message>
        <source>Check for updates at startup</source>
        <translation>Buscar actualizaciones al iniciar</translation>
    </message>
    <message>
        <source>Checks the Quayside update service at most once a day, and whenever you use Help &gt; Check for Updates.</source>
        <translation>Consulta el servicio de actualizaciones de Quayside una vez al día como máximo y siempre que use Ayuda &gt; Buscar actualizaciones.</translation>
    </message>
    <message>
        <source>Ask me each time</source>
        <translation>Preguntar cada vez</translation>
    </message>
    <message>
        <source>Minimise to the tray</source>
        <translation>Minimizar a la bandeja</translation>
    </message>
    <message>
        <source>Exit Tidewell</source>
        <translation>Salir de Tidewell</translation>
    </message>
    <message>
        <source>Follow system</source>
        <translation>Según el sistema</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Claro</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Oscuro</translation>
    </message>
    <message>
        <source>System language</source>
        <translation>Idioma del sistema</translation>
    </message>
    <message>
        <source>Start with the operating system</source>
        <translation>Iniciar con el sistema operativo</translation>
    </message>
    <message>
        <source>Closing the window:</source>
        <translation>Al cerrar la ventana:</translation>
    </message>
    <message>
        <source>Appearance:</source>
        <translation>Apariencia:</translation>
    </message>
    <message>
        <source>Show button on taskbar</source>
        <translation>Mostrar el botón en la barra de tareas</translation>
    </message>
    <message>
        <source>Restart the program if it crashes or hangs</source>
        <translation>Reiniciar el programa si falla o se bloquea</translation>
    </message>
    <message>
        <source>Language:</source>
        <translation>Idioma:</translation>
    </message>
</context>
<context>
    <name>Heartbeat</name>
    <message>
        <source>The address of the heartbeat cannot be reached: %1</source>
        <translation>No se puede acceder a la dirección de la señal de vida: %1</translation>
    </message>
    <message>
        <source>The address of the heartbeat is reached again</source>
        <translation>Se accede de nuevo a la dirección de la señal de vida</translation>
    </message>
</context>
<context>
    <name>Housekeeper</name>
    <message numerus="yes">
        <source>Deleted %n old recording(s)</source>
        <translation>
            <numerusform>Se eliminó %n grabación antigua</numerusform>
            <numerusform>Se eliminaron %n grabaciones antiguas</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>InstanceLock</name>
    <message>
        <source>No lock can be made in the temporary folder %1. A second start of this channel would not be noticed.</source>
        <translation>No se puede crear un bloqueo en la carpeta temporal %1. No se notaría que este canal se inicia por segunda vez.</translation>
    </message>
</context>
<context>
    <name>Journal</name>
    <message>
        <source>The journal cannot be written into %1. Its lines wait in memory until it can.</source>
        <translation>No se puede escribir el diario en %1. Sus líneas esperan en memoria hasta que se pueda.</translation>
    </message>
    <message>
        <source>The journal is written again.</source>
        <translation>El diario se escribe de nuevo.</translation>
    </message>
    <message>
        <source>The journal cannot be copied into the recordings folder (%1). It is kept in %2 until then.</source>
        <translation>No se puede copiar el diario en la carpeta de grabaciones (%1). Hasta entonces se guarda en %2.</translation>
    </message>
    <message>
        <source>The journal is copied into the recordings folder again.</source>
        <translation>El diario se copia de nuevo en la carpeta de grabaciones.</translation>
    </message>
</context>
<context>
    <name>JournalFeed</name>
    <message>
        <source>%1 s of an outage are made up by silence</source>
        <translation>%1 s de un corte se compensan con silencio</translation>
    </message>
    <message>
        <source>No audio arrives from the source</source>
        <translation>No llega audio de la fuente</translation>
    </message>
    <message>
        <source>Audio arrives again after %1 s</source>
        <translation>Llega audio de nuevo después de %1 s</translation>
    </message>
    <message>
        <source>The clock was set by %1 s, or the computer slept</source>
        <translation>El reloj se ajustó en %1 s, o el equipo estuvo en suspensión</translation>
    </message>
</context>
<context>
    <name>LameEncoder</name>
    <message>
        <source>This build was compiled without LAME support.</source>
        <translation>Esta versión se compiló sin compatibilidad con LAME.</translation>
    </message>
</context>
<context>
    <name>LogList</name>
    <message>
        <source>Log</source>
        <translation>Registro</translation>
    </message>
</context>
<context>
    <name>LoopbackCapture</name>
    <message>
        <source>(default playback device)</source>
        <translation>(salida de audio predeterminada)</translation>
    </message>
</context>
<context>
    <name>LoopbackWorker</name>
    <message>
        <source>No playback device is available for loopback capture.</source>
        <translation>No hay ninguna salida de audio para la captura en loopback.</translation>
    </message>
    <message>
        <source>Could not start loopback capture.</source>
        <translation>No se pudo iniciar la captura en loopback.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Tidewell</source>
        <translation>Tidewell</translation>
    </message>
    <message>
        <source>&amp;Tidewell</source>
        <translation>&amp;Tidewell</translation>
    </message>
    <message>
        <source>Sc&amp;heduler...</source>
        <translation>&amp;Programador...</translation>
    </message>
    <message>
        <source>Start/stop &amp;recording</source>
        <translation>Iniciar/detener la &amp;grabación</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>A&amp;yuda</translation>
    </message>
    <message>
        <source>Check for &amp;Updates...</source>
        <translation>&amp;Buscar actualizaciones...</translation>
    </message>
    <message>
        <source>Capture &amp;Diagnostics</source>
        <translation>&amp;Diagnóstico de captura</translation>
    </message>
    <message>
        <source>&amp;About Tidewell</source>
        <translation>&amp;Acerca de Tidewell</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Grabando</translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>En espera</translation>
    </message>
    <message>
        <source>Diagnostics copied to the clipboard</source>
        <translation>Diagnóstico copiado en el portapapeles</translation>
    </message>
    <message>
        <source>&amp;Settings...</source>
        <translation>&amp;Configuración...</translation>
    </message>
    <message>
        <source>&amp;Archive...</source>
        <translation>&amp;Archivo sonoro...</translation>
    </message>
</context>
<context>
    <name>MidiTrigger</name>
    <message>
        <source>No MIDI input devices were found.</source>
        <translation>No se encontró ningún dispositivo de entrada MIDI.</translation>
    </message>
    <message>
        <source>Could not open the MIDI input (error %1).</source>
        <translation>No se pudo abrir la entrada MIDI (error %1).</translation>
    </message>
    <message>
        <source>Trigger listening on %1</source>
        <translation>Disparo a la escucha en %1</translation>
    </message>
    <message>
        <source>channel %1</source>
        <translation>canal %1</translation>
    </message>
    <message>
        <source>any channel</source>
        <translation>cualquier canal</translation>
    </message>
    <message>
        <source>MIDI %1, number %2, %3</source>
        <translation>MIDI %1, número %2, %3</translation>
    </message>
    <message>
        <source>input</source>
        <translation>entrada</translation>
    </message>
    <message>
        <source>The MIDI input %1 was removed.</source>
        <translation>Se ha retirado la entrada MIDI %1.</translation>
    </message>
</context>
<context>
    <name>OutputTab</name>
    <message>
        <source>&amp;Choose...</source>
        <translation>&amp;Elegir...</translation>
    </message>
    <message>
        <source>Filename template</source>
        <translation>Plantilla de nombre</translation>
    </message>
    <message>
        <source> minute segments</source>
        <translation> min</translation>
    </message>
    <message>
        <source>do not split</source>
        <translation>no dividir</translation>
    </message>
    <message>
        <source>Align splits to the clock</source>
        <translation>Alinear los segmentos con el reloj</translation>
    </message>
    <message>
        <source>Auto delete</source>
        <translation>Eliminación automática</translation>
    </message>
    <message>
        <source> day(s)</source>
        <translation> día(s)</translation>
    </message>
    <message>
        <source>Delete records older than</source>
        <translation>Eliminar las grabaciones de más de</translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation>Carpeta:</translation>
    </message>
    <message>
        <source>Filename template:</source>
        <translation>Plantilla de nombre:</translation>
    </message>
    <message>
        <source>Split records into:</source>
        <translation>Dividir en segmentos de:</translation>
    </message>
    <message>
        <source>Select the recordings folder</source>
        <translation>Seleccione la carpeta de grabaciones</translation>
    </message>
    <message>
        <source>Filename test: %1</source>
        <translation>Ejemplo de nombre: %1</translation>
    </message>
    <message>
        <source>&lt;p&gt;Available tokens:&lt;/p&gt;&lt;table&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%y&lt;/b&gt;&lt;/td&gt;&lt;td&gt;year (4 digits)&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%m&lt;/b&gt;&lt;/td&gt;&lt;td&gt;month&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%d&lt;/b&gt;&lt;/td&gt;&lt;td&gt;day&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%hh&lt;/b&gt;&lt;/td&gt;&lt;td&gt;hour&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%mm&lt;/b&gt;&lt;/td&gt;&lt;td&gt;minute&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%ss&lt;/b&gt;&lt;/td&gt;&lt;td&gt;second&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%sn&lt;/b&gt;&lt;/td&gt;&lt;td&gt;serial number, incremented automatically for each file&lt;/td&gt;&lt;/tr&gt;&lt;/table&gt;&lt;p&gt;The file extension is added automatically.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Códigos disponibles:&lt;/p&gt;&lt;table&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%y&lt;/b&gt;&lt;/td&gt;&lt;td&gt;año (4 cifras)&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%m&lt;/b&gt;&lt;/td&gt;&lt;td&gt;mes&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%d&lt;/b&gt;&lt;/td&gt;&lt;td&gt;día&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%hh&lt;/b&gt;&lt;/td&gt;&lt;td&gt;hora&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%mm&lt;/b&gt;&lt;/td&gt;&lt;td&gt;minuto&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%ss&lt;/b&gt;&lt;/td&gt;&lt;td&gt;segundo&lt;/td&gt;&lt;/tr&gt;&lt;tr&gt;&lt;td&gt;&lt;b&gt;%sn&lt;/b&gt;&lt;/td&gt;&lt;td&gt;número de serie, que aumenta automáticamente con cada archivo&lt;/td&gt;&lt;/tr&gt;&lt;/table&gt;&lt;p&gt;La extensión del archivo se añade automáticamente.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>When the disk is full, delete the oldest first</source>
        <translation>Cuando el disco esté lleno, eliminar primero las más antiguas</translation>
    </message>
    <message>
        <source>Never below</source>
        <translation>Nunca menos de</translation>
    </message>
    <message>
        <source>Copy to</source>
        <translation>Copiar a</translation>
    </message>
    <message>
        <source>C&amp;hoose...</source>
        <translation>El&amp;egir...</translation>
    </message>
    <message>
        <source>Delete copies older than</source>
        <translation>Eliminar copias anteriores a</translation>
    </message>
    <message>
        <source>Select the folder of the second copy</source>
        <translation>Seleccione la carpeta de la segunda copia</translation>
    </message>
</context>
<context>
    <name>PauseButton</name>
    <message>
        <source>&amp;Pause</source>
        <translation>&amp;Pausa</translation>
    </message>
    <message>
        <source>Pause &amp;15 min</source>
        <translation>Pausa de &amp;15 min</translation>
    </message>
    <message>
        <source>Pause 1 &amp;h</source>
        <translation>Pausa de 1 &amp;h</translation>
    </message>
    <message>
        <source>Pause &amp;until I start it</source>
        <translation>Pausa hasta que la &amp;reanude</translation>
    </message>
    <message>
        <source>&amp;Go on now</source>
        <translation>&amp;Continuar ahora</translation>
    </message>
    <message>
        <source>Record nothing for a while</source>
        <translation>No grabar nada durante un rato</translation>
    </message>
</context>
<context>
    <name>PulseLoopbackWorker</name>
    <message>
        <source>Could not connect to the sound server (%1).</source>
        <translation>No se pudo conectar con el servidor de sonido (%1).</translation>
    </message>
    <message>
        <source>The connection to the sound server was lost (%1).</source>
        <translation>Se perdió la conexión con el servidor de sonido (%1).</translation>
    </message>
</context>
<context>
    <name>QtAudioCapture</name>
    <message>
        <source>(no input device)</source>
        <translation>(sin dispositivo de entrada)</translation>
    </message>
    <message>
        <source>No audio input device is available.</source>
        <translation>No hay ningún dispositivo de entrada de audio.</translation>
    </message>
    <message>
        <source>The device %1 does not accept a usable capture format.</source>
        <translation>El dispositivo %1 no admite ningún formato de captura utilizable.</translation>
    </message>
    <message>
        <source>Could not open the audio input device.</source>
        <translation>No se pudo abrir el dispositivo de entrada de audio.</translation>
    </message>
    <message>
        <source>Audio input error (code %1).</source>
        <translation>Error de la entrada de audio (código %1).</translation>
    </message>
    <message>
        <source>Channel %1 was asked for, but the device %2 has only %3.</source>
        <translation>Se pidió el canal %1, pero el dispositivo %2 solo tiene %3.</translation>
    </message>
    <message>
        <source>Channels %1 were asked for, but the device %2 has only %3.</source>
        <translation>Se pidieron los canales %1, pero el dispositivo %2 solo tiene %3.</translation>
    </message>
    <message>
        <source>The audio input device %1 was removed.</source>
        <translation>Se ha desconectado el dispositivo de entrada de audio %1.</translation>
    </message>
    <message>
        <source>The audio input device %1 is back and is recorded again.</source>
        <translation>El dispositivo de entrada de audio %1 vuelve a estar disponible y se graba de nuevo.</translation>
    </message>
</context>
<context>
    <name>Recorder</name>
    <message>
        <source>Shutdown</source>
        <translation>Cierre</translation>
    </message>
    <message>
        <source>Cannot create the output folder: %1</source>
        <translation>No se puede crear la carpeta de salida: %1</translation>
    </message>
    <message>
        <source>Recording started</source>
        <translation>Grabación iniciada</translation>
    </message>
    <message>
        <source>Recording started (%1)</source>
        <translation>Grabación iniciada (%1)</translation>
    </message>
    <message>
        <source>Cannot start encoding: %1</source>
        <translation>No se puede iniciar la codificación: %1</translation>
    </message>
    <message>
        <source>Recording %1 - %2</source>
        <translation>Grabando %1 - %2</translation>
    </message>
    <message>
        <source>Recording stopped</source>
        <translation>Grabación detenida</translation>
    </message>
    <message>
        <source>Recording stopped (%1)</source>
        <translation>Grabación detenida (%1)</translation>
    </message>
    <message>
        <source>split failed</source>
        <translation>fallo al dividir</translation>
    </message>
    <message>
        <source>Write failed: %1</source>
        <translation>Fallo de escritura: %1</translation>
    </message>
    <message>
        <source>no encoder</source>
        <translation>sin codificador</translation>
    </message>
    <message>
        <source>write error</source>
        <translation>error de escritura</translation>
    </message>
    <message>
        <source>capture error</source>
        <translation>error de captura</translation>
    </message>
    <message>
        <source>The audio source has ended by itself.</source>
        <translation>La fuente de audio ha terminado por sí sola.</translation>
    </message>
    <message>
        <source>%1 may be incomplete: %2</source>
        <translation>Puede que %1 esté incompleto: %2</translation>
    </message>
    <message>
        <source>manual</source>
        <translation>manual</translation>
    </message>
    <message>
        <source>scheduler</source>
        <translation>programador</translation>
    </message>
    <message>
        <source>trigger</source>
        <translation>disparo</translation>
    </message>
    <message>
        <source>settings changed</source>
        <translation>cambio de configuración</translation>
    </message>
    <message>
        <source>exit</source>
        <translation>salida del programa</translation>
    </message>
    <message>
        <source>%1 takes no more audio. The recording goes on in the next file.</source>
        <translation>%1 no admite más audio. La grabación sigue en el archivo siguiente.</translation>
    </message>
    <message numerus="yes">
        <source>%n second(s) of audio are lost: no file took them.</source>
        <translation>
            <numerusform>Se ha perdido %n segundo de audio: ningún archivo lo admitió.</numerusform>
            <numerusform>Se han perdido %n segundos de audio: ningún archivo los admitió.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RecordingPause</name>
    <message>
        <source>Paused until %1</source>
        <translation>En pausa hasta las %1</translation>
    </message>
    <message>
        <source>Paused until you start it</source>
        <translation>En pausa hasta que la reanude</translation>
    </message>
</context>
<context>
    <name>RecordingTab</name>
    <message>
        <source>Playback device (loopback)</source>
        <translation>Salida de audio (loopback)</translation>
    </message>
    <message>
        <source>Input device</source>
        <translation>Dispositivo de entrada</translation>
    </message>
    <message>
        <source>Internet stream (URL)</source>
        <translation>Emisión por Internet (URL)</translation>
    </message>
    <message>
        <source>(default device)</source>
        <translation>(dispositivo predeterminado)</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>Act&amp;ualizar</translation>
    </message>
    <message>
        <source>Icecast, Shoutcast, HLS or plain HTTP. Requires ffmpeg.</source>
        <translation>Icecast, Shoutcast, HLS o HTTP simple. Requiere ffmpeg.</translation>
    </message>
    <message>
        <source>Reconnect automatically</source>
        <translation>Reconectar automáticamente</translation>
    </message>
    <message>
        <source>Recording source</source>
        <translation>Fuente de grabación</translation>
    </message>
    <message>
        <source>Capture from:</source>
        <translation>Capturar desde:</translation>
    </message>
    <message>
        <source>Device:</source>
        <translation>Dispositivo:</translation>
    </message>
    <message>
        <source>Stream URL:</source>
        <translation>URL de la emisión:</translation>
    </message>
    <message>
        <source>MP3</source>
        <translation>MP3</translation>
    </message>
    <message>
        <source>Ogg Vorbis</source>
        <translation>Ogg Vorbis</translation>
    </message>
    <message>
        <source>FLAC</source>
        <translation>FLAC</translation>
    </message>
    <message>
        <source>AAC</source>
        <translation>AAC</translation>
    </message>
    <message>
        <source>WAV (uncompressed)</source>
        <translation>WAV (sin comprimir)</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 kbps</source>
        <translation>%1 kbps</translation>
    </message>
    <message>
        <source>mono</source>
        <translation>mono</translation>
    </message>
    <message>
        <source>stereo</source>
        <translation>estéreo</translation>
    </message>
    <message>
        <source> dB</source>
        <translation> dB</translation>
    </message>
    <message>
        <source>Limit peaks instead of clipping</source>
        <translation>Limitar los picos en lugar de recortarlos</translation>
    </message>
    <message>
        <source>A loopback mix can exceed 0 dBFS. With this on, overshoots are rounded off just below full scale instead of being clipped flat.</source>
        <translation>Una mezcla en loopback puede superar 0 dBFS. Con esta opción, los excesos se redondean justo por debajo del fondo de escala en lugar de recortarse en seco.</translation>
    </message>
    <message>
        <source>Recording format</source>
        <translation>Formato de grabación</translation>
    </message>
    <message>
        <source>Codec:</source>
        <translation>Códec:</translation>
    </message>
    <message>
        <source>Sample rate:</source>
        <translation>Frecuencia de muestreo:</translation>
    </message>
    <message>
        <source>Bit rate:</source>
        <translation>Tasa de bits:</translation>
    </message>
    <message>
        <source>Channels:</source>
        <translation>Canales:</translation>
    </message>
    <message>
        <source>Ogg quality:</source>
        <translation>Calidad Ogg:</translation>
    </message>
    <message>
        <source>Input gain:</source>
        <translation>Ganancia de entrada:</translation>
    </message>
    <message>
        <source>Default playback device</source>
        <translation>Salida de audio predeterminada</translation>
    </message>
    <message>
        <source>(decoded by ffmpeg)</source>
        <translation>(decodificada por ffmpeg)</translation>
    </message>
    <message>
        <source>(ffmpeg not found - stream logging unavailable)</source>
        <translation>(ffmpeg no encontrado: no se pueden registrar emisiones)</translation>
    </message>
    <message>
        <source>&lt;b&gt;Current source:&lt;/b&gt; %1</source>
        <translation>&lt;b&gt;Fuente actual:&lt;/b&gt; %1</translation>
    </message>
    <message>
        <source>MP3 needs either LAME compiled in or ffmpeg on the PATH.</source>
        <translation>MP3 necesita LAME integrado en el programa o ffmpeg en el PATH.</translation>
    </message>
    <message>
        <source>Ogg needs either libvorbis compiled in or ffmpeg on the PATH.</source>
        <translation>Ogg necesita libvorbis integrado en el programa o ffmpeg en el PATH.</translation>
    </message>
    <message>
        <source>This codec requires ffmpeg on the PATH.</source>
        <translation>Este códec requiere ffmpeg en el PATH.</translation>
    </message>
    <message>
        <source>Channels of the device:</source>
        <translation>Canales del dispositivo:</translation>
    </message>
    <message>
        <source>A sound card with many inputs may carry several programmes. Choose the pair of channels, or the single one, that is to be recorded here.</source>
        <translation>Una tarjeta de sonido con muchas entradas puede llevar varios programas. Elija el par de canales, o el canal único, que se grabará aquí.</translation>
    </message>
    <message>
        <source>as the device delivers</source>
        <translation>como los entrega el dispositivo</translation>
    </message>
    <message>
        <source>%1 only</source>
        <translation>solo %1</translation>
    </message>
</context>
<context>
    <name>RetentionText</name>
    <message>
        <source>Nothing is ever deleted</source>
        <translation>Nunca se elimina nada</translation>
    </message>
    <message>
        <source>1 day needs %1</source>
        <translation>1 día necesita %1</translation>
    </message>
    <message>
        <source>%1 days need %2</source>
        <translation>%1 días necesitan %2</translation>
    </message>
    <message>
        <source>%1; how much is free is not known.</source>
        <translation>%1; no se sabe cuánto hay libre.</translation>
    </message>
    <message>
        <source>%1 are free, %2 hold recordings</source>
        <translation>%1 están libres, %2 contienen grabaciones</translation>
    </message>
    <message>
        <source>%1 are free</source>
        <translation>%1 están libres</translation>
    </message>
    <message>
        <source>enough for 1 day</source>
        <translation>suficiente para 1 día</translation>
    </message>
    <message>
        <source>enough for %1 days</source>
        <translation>suficiente para %1 días</translation>
    </message>
    <message>
        <source>%1; %2: %3.</source>
        <comment>days need bytes; bytes are free: enough for days</comment>
        <translation>%1; %2: %3.</translation>
    </message>
</context>
<context>
    <name>ScheduleController</name>
    <message>
        <source>Scheduler enabled</source>
        <translation>Programador activado</translation>
    </message>
    <message>
        <source>Scheduler disabled</source>
        <translation>Programador desactivado</translation>
    </message>
    <message>
        <source>Scheduled block %1 - %2</source>
        <translation>Bloque programado %1 - %2</translation>
    </message>
</context>
<context>
    <name>SchedulerDialog</name>
    <message>
        <source>Scheduler</source>
        <translation>Programador</translation>
    </message>
    <message>
        <source>&lt;b&gt;Hours to record&lt;/b&gt; (hours marked green will be recorded)&lt;br&gt;Drag with the left button to mark, the right button to clear, or press the space bar to toggle the selection.</source>
        <translation>&lt;b&gt;Horas de grabación&lt;/b&gt; (se grabarán las horas marcadas en verde)&lt;br&gt;Arrastre con el botón izquierdo para marcar o con el derecho para borrar, o pulse la barra espaciadora para cambiar la selección.</translation>
    </message>
    <message>
        <source>Record &amp;always</source>
        <translation>Grabar &amp;siempre</translation>
    </message>
    <message>
        <source>Clear a&amp;ll</source>
        <translation>&amp;Borrar todo</translation>
    </message>
    <message>
        <source>&amp;Office hours</source>
        <translation>Horario de &amp;oficina</translation>
    </message>
</context>
<context>
    <name>SchedulerGrid</name>
    <message>
        <source>%1 %2: recorded</source>
        <translation>%1 %2: se graba</translation>
    </message>
    <message>
        <source>%1 %2: not recorded</source>
        <translation>%1 %2: no se graba</translation>
    </message>
</context>
<context>
    <name>SerialTrigger</name>
    <message>
        <source>No serial port has been selected for triggering.</source>
        <translation>No se ha seleccionado ningún puerto serie para el disparo.</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>No se puede abrir %1: %2</translation>
    </message>
    <message>
        <source>Trigger listening on %1</source>
        <translation>Disparo a la escucha en %1</translation>
    </message>
    <message>
        <source>%1 (%2 baud, text)</source>
        <translation>%1 (%2 baudios, texto)</translation>
    </message>
    <message>
        <source>%1 (%2%3)</source>
        <translation>%1 (%2%3)</translation>
    </message>
    <message>
        <source>, inverted</source>
        <translation>, invertida</translation>
    </message>
    <message>
        <source>The serial port %1 was lost: %2</source>
        <translation>Se perdió el puerto serie %1: %2</translation>
    </message>
    <message>
        <source>This build was compiled without Qt SerialPort support.</source>
        <translation>Esta versión se compiló sin compatibilidad con Qt SerialPort.</translation>
    </message>
    <message>
        <source>the device is gone</source>
        <translation>el dispositivo ya no está</translation>
    </message>
    <message>
        <source>The lines of %1 can be read again</source>
        <translation>Las líneas de %1 se pueden leer de nuevo</translation>
    </message>
    <message>
        <source>The lines of %1 cannot be read: %2</source>
        <translation>No se pueden leer las líneas de %1: %2</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation>Configuración</translation>
    </message>
    <message>
        <source>&amp;Recording</source>
        <translation>&amp;Grabación</translation>
    </message>
    <message>
        <source>&amp;Output</source>
        <translation>&amp;Salida</translation>
    </message>
    <message>
        <source>&amp;Triggers</source>
        <translation>&amp;Disparo</translation>
    </message>
    <message>
        <source>&amp;Alerts</source>
        <translation>&amp;Alertas</translation>
    </message>
    <message>
        <source>&amp;General</source>
        <translation>Ge&amp;neral</translation>
    </message>
    <message>
        <source>A&amp;larms</source>
        <translation>A&amp;larmas</translation>
    </message>
</context>
<context>
    <name>SettingsText</name>
    <message>
        <source>There is no setting &quot;%1&quot;. The settings are listed by --get.</source>
        <translation>No hay ningún ajuste «%1». --get los muestra todos.</translation>
    </message>
    <message>
        <source>The value of %1 is too long.</source>
        <translation>El valor de %1 es demasiado largo.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no value for %2.</source>
        <translation>«%1» no es un valor para %2.</translation>
    </message>
    <message>
        <source>%1 takes one of: %2.</source>
        <translation>%1 admite uno de estos: %2.</translation>
    </message>
    <message>
        <source>%1 takes a number from %2 to %3.</source>
        <translation>%1 admite un número de %2 a %3.</translation>
    </message>
    <message>
        <source>The folder must be an absolute path.</source>
        <translation>La carpeta debe ser una ruta absoluta.</translation>
    </message>
    <message>
        <source>A schedule has %1 characters, 1 for each hour to record and 0 for the others, from Monday 00:00.</source>
        <translation>Un horario tiene %1 caracteres: 1 para cada hora que se graba y 0 para las demás, desde el lunes a las 00:00.</translation>
    </message>
    <message>
        <source>The value of %1 must be one line of text.</source>
        <translation>El valor de %1 debe ser una línea de texto.</translation>
    </message>
    <message>
        <source>There is nothing to change.</source>
        <translation>No hay nada que cambiar.</translation>
    </message>
    <message>
        <source>The settings could not be stored: %1</source>
        <translation>No se pudieron guardar los ajustes: %1</translation>
    </message>
    <message>
        <source>The address must begin with http:// or https://.</source>
        <translation>La dirección debe empezar por http:// o https://.</translation>
    </message>
</context>
<context>
    <name>SilenceAlert</name>
    <message>
        <source>Silence notification sent</source>
        <translation>Aviso de silencio enviado</translation>
    </message>
    <message>
        <source>Silence notification failed: %1</source>
        <translation>Fallo al enviar el aviso de silencio: %1</translation>
    </message>
    <message>
        <source>Tidewell detected silence on the recorded source.

Time: %1
Source: %2
Threshold: %3 dB for %4 seconds
Current file: %5
</source>
        <translation>Tidewell ha detectado silencio en la fuente grabada.

Hora: %1
Fuente: %2
Umbral: %3 dB durante %4 segundos
Archivo actual: %5
</translation>
    </message>
</context>
<context>
    <name>SmtpClient</name>
    <message>
        <source>SMTP server or recipient address is not configured.</source>
        <translation>No se ha configurado el servidor SMTP o la dirección de destino.</translation>
    </message>
    <message>
        <source>Authentication failed: %1</source>
        <translation>Fallo de autenticación: %1</translation>
    </message>
    <message>
        <source>Notification sent.</source>
        <translation>Aviso enviado.</translation>
    </message>
    <message>
        <source>The SMTP server did not respond in time.</source>
        <translation>El servidor SMTP no respondió a tiempo.</translation>
    </message>
</context>
<context>
    <name>SpaceKeeper</name>
    <message numerus="yes">
        <source>Deleted %n recording(s), the oldest first, since the disk was full</source>
        <translation>
            <numerusform>Se eliminó %n grabación, la más antigua, porque el disco estaba lleno</numerusform>
            <numerusform>Se eliminaron %n grabaciones, las más antiguas primero, porque el disco estaba lleno</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The disk is nearly full (%1 free), and there is no recording that may be deleted: none is older than %n day(s). Free some space, or let fewer days be kept (Settings, Output).</source>
        <translation>
            <numerusform>El disco está casi lleno (%1 libres) y no hay ninguna grabación que se pueda eliminar: ninguna tiene más de %n día. Libere espacio o conserve menos días (Configuración, Salida).</numerusform>
            <numerusform>El disco está casi lleno (%1 libres) y no hay ninguna grabación que se pueda eliminar: ninguna tiene más de %n días. Libere espacio o conserve menos días (Configuración, Salida).</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StartUp</name>
    <message>
        <source>Tidewell crashed again and again, so this start has waited for %1 seconds.</source>
        <translation>Tidewell se ha bloqueado una y otra vez, por lo que este inicio ha esperado %1 segundos.</translation>
    </message>
</context>
<context>
    <name>StateView</name>
    <message>
        <source>Tidewell</source>
        <translation>Tidewell</translation>
    </message>
    <message>
        <source>%1 - %2</source>
        <translation>%1 - %2</translation>
    </message>
</context>
<context>
    <name>Station</name>
    <message>
        <source>Audio restored</source>
        <translation>Audio restablecido</translation>
    </message>
    <message>
        <source>Saved %1 (%2)</source>
        <translation>Guardado: %1 (%2)</translation>
    </message>
    <message>
        <source>Tidewell started</source>
        <translation>Tidewell iniciado</translation>
    </message>
    <message>
        <source>Schedule updated</source>
        <translation>Programación actualizada</translation>
    </message>
    <message>
        <source>Checking for updates...</source>
        <translation>Buscando actualizaciones...</translation>
    </message>
    <message>
        <source>Settings saved</source>
        <translation>Configuración guardada</translation>
    </message>
    <message numerus="yes">
        <source>Silence detected (longer than %n second(s))</source>
        <translation>
            <numerusform>Silencio detectado (más de %n segundo)</numerusform>
            <numerusform>Silencio detectado (más de %n segundos)</numerusform>
        </translation>
    </message>
    <message>
        <source>Input above full scale - peaks are being limited. Reduce the input gain if this persists.</source>
        <translation>La entrada supera el fondo de escala: se están limitando los picos. Reduzca la ganancia de entrada si persiste.</translation>
    </message>
    <message>
        <source>Update available: version %1</source>
        <translation>Actualización disponible: versión %1</translation>
    </message>
    <message>
        <source>Update check failed: %1</source>
        <translation>Fallo al buscar actualizaciones: %1</translation>
    </message>
    <message>
        <source>Tidewell has crashed and was started again. This file may tell why: %1</source>
        <translation>Tidewell falló y se inició de nuevo. Este archivo puede decir por qué: %1</translation>
    </message>
    <message>
        <source>No lock can be made in the recordings folder, so another channel that uses it would not be noticed.</source>
        <translation>No se puede crear un bloqueo en la carpeta de grabaciones, así que no se advertiría otro canal que la use.</translation>
    </message>
    <message>
        <source>No further attempts are made</source>
        <translation>No se hacen más intentos</translation>
    </message>
    <message>
        <source>The pause is over</source>
        <translation>La pausa ha terminado</translation>
    </message>
    <message>
        <source>The chosen audio input %1 is not there. %2 is recorded instead.</source>
        <translation>La entrada de audio elegida, %1, no está disponible. Se graba %2 en su lugar.</translation>
    </message>
    <message>
        <source>No audio arrives from %1.</source>
        <translation>No llega audio de %1.</translation>
    </message>
    <message numerus="yes">
        <source>Audio arrives again after %n second(s).</source>
        <translation>
            <numerusform>Vuelve a llegar audio tras %n segundo.</numerusform>
            <numerusform>Vuelve a llegar audio tras %n segundos.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StationStatus</name>
    <message>
        <source>RECORDING</source>
        <translation>GRABANDO</translation>
    </message>
    <message>
        <source>DISK</source>
        <translation>DISCO</translation>
    </message>
    <message>
        <source>SILENCE since %1</source>
        <translation>SILENCIO desde %1</translation>
    </message>
    <message>
        <source>NO AUDIO</source>
        <translation>SIN AUDIO</translation>
    </message>
    <message>
        <source>NOT RECORDING</source>
        <translation>NO SE GRABA</translation>
    </message>
    <message>
        <source>TRYING AGAIN</source>
        <translation>REINTENTANDO</translation>
    </message>
    <message>
        <source>COPY</source>
        <translation>COPIA</translation>
    </message>
</context>
<context>
    <name>StatusBar</name>
    <message>
        <source>Ready</source>
        <translation>Listo</translation>
    </message>
    <message>
        <source>Trigger: none</source>
        <translation>Disparo: ninguno</translation>
    </message>
    <message>
        <source>Trigger: ON</source>
        <translation>Disparo: ACTIVO</translation>
    </message>
    <message>
        <source>Trigger: off</source>
        <translation>Disparo: inactivo</translation>
    </message>
    <message>
        <source>Trying again</source>
        <translation>Reintentando</translation>
    </message>
</context>
<context>
    <name>StatusTexts</name>
    <message>
        <source>LOOP</source>
        <translation>LOOP</translation>
    </message>
    <message>
        <source>default playback device</source>
        <translation>salida predeterminada</translation>
    </message>
    <message>
        <source>NET</source>
        <translation>RED</translation>
    </message>
    <message>
        <source>no stream URL</source>
        <translation>sin URL de emisión</translation>
    </message>
    <message>
        <source>IN</source>
        <translation>ENT</translation>
    </message>
    <message>
        <source>default input device</source>
        <translation>entrada predeterminada</translation>
    </message>
    <message>
        <source>MONO</source>
        <translation>MONO</translation>
    </message>
    <message>
        <source>STEREO</source>
        <translation>ESTÉREO</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>desconocido</translation>
    </message>
    <message>
        <source>%1d %2h</source>
        <translation>%1d %2h</translation>
    </message>
    <message>
        <source>COPY ok</source>
        <translation>COPIA al día</translation>
    </message>
    <message numerus="yes">
        <source>COPY %n file(s) behind</source>
        <translation>
            <numerusform>COPIA con %n archivo de atraso</numerusform>
            <numerusform>COPIA con %n archivos de atraso</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StreamCapture</name>
    <message>
        <source>(no stream URL)</source>
        <translation>(sin URL de emisión)</translation>
    </message>
    <message>
        <source>No stream URL has been configured.</source>
        <translation>No se ha configurado ninguna URL de emisión.</translation>
    </message>
    <message>
        <source>The stream URL is not valid: %1</source>
        <translation>La URL de la emisión no es válida: %1</translation>
    </message>
    <message>
        <source>Stream logging needs ffmpeg, which was not found on this system. Install it or place ffmpeg next to Tidewell.</source>
        <translation>El registro de emisiones necesita ffmpeg, que no se encontró en este sistema. Instálelo o coloque ffmpeg junto a Tidewell.</translation>
    </message>
    <message>
        <source>Could not start ffmpeg: %1</source>
        <translation>No se pudo iniciar ffmpeg: %1</translation>
    </message>
    <message>
        <source>Stream connected: %1</source>
        <translation>Emisión conectada: %1</translation>
    </message>
    <message>
        <source>Stream stalled for %1 s - reconnecting</source>
        <translation>Emisión parada durante %1 s: reconectando</translation>
    </message>
    <message>
        <source>Stream decoder exited - reconnecting</source>
        <translation>El decodificador de la emisión terminó: reconectando</translation>
    </message>
    <message>
        <source>The stream ended and reconnection is disabled.</source>
        <translation>La emisión terminó y la reconexión está desactivada.</translation>
    </message>
</context>
<context>
    <name>SupportBundle</name>
    <message>
        <source>The file %1 cannot be written: %2</source>
        <translation>No se puede escribir el archivo %1: %2</translation>
    </message>
    <message>
        <source>%1 is no ordinary file.</source>
        <translation>%1 no es un archivo ordinario.</translation>
    </message>
</context>
<context>
    <name>TrayIcon</name>
    <message>
        <source>&amp;Show</source>
        <translation>&amp;Mostrar</translation>
    </message>
    <message>
        <source>Start/stop &amp;recording</source>
        <translation>Iniciar/detener la &amp;grabación</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>Tidewell</source>
        <translation>Tidewell</translation>
    </message>
    <message>
        <source>Tidewell - recording</source>
        <translation>Tidewell - grabando</translation>
    </message>
    <message>
        <source>Tidewell - idle</source>
        <translation>Tidewell - en espera</translation>
    </message>
    <message>
        <source>Tidewell - %1</source>
        <translation>Tidewell - %1</translation>
    </message>
    <message>
        <source>Silence detected on the recorded source.</source>
        <translation>Silencio detectado en la fuente grabada.</translation>
    </message>
    <message>
        <source>Still recording. Double-click to reopen.</source>
        <translation>La grabación continúa. Haga doble clic para abrir la ventana.</translation>
    </message>
    <message>
        <source>Still running. Double-click to reopen.</source>
        <translation>El programa sigue en marcha. Haga doble clic para abrir la ventana.</translation>
    </message>
</context>
<context>
    <name>TriggerController</name>
    <message>
        <source>Trigger on</source>
        <translation>Disparo activado</translation>
    </message>
    <message>
        <source>Trigger off</source>
        <translation>Disparo desactivado</translation>
    </message>
    <message>
        <source>The trigger is back: %1</source>
        <translation>El disparador ha vuelto: %1</translation>
    </message>
</context>
<context>
    <name>TriggersTab</name>
    <message>
        <source>Off</source>
        <translation>Desactivado</translation>
    </message>
    <message>
        <source>Serial contact closure</source>
        <translation>Cierre de contacto en puerto serie</translation>
    </message>
    <message>
        <source>Serial text command</source>
        <translation>Comando de texto por puerto serie</translation>
    </message>
    <message>
        <source>MIDI note or control change</source>
        <translation>Nota o cambio de control MIDI</translation>
    </message>
    <message>
        <source>External trigger</source>
        <translation>Disparo externo</translation>
    </message>
    <message>
        <source>Trigger:</source>
        <translation>Disparo:</translation>
    </message>
    <message>
        <source> sec</source>
        <translation> s</translation>
    </message>
    <message>
        <source>Keep recording for this long after the trigger releases, so brief gaps between links do not chop the archive into fragments.</source>
        <translation>Sigue grabando durante este tiempo tras cesar el disparo, para que las pausas breves entre intervenciones no dejen el archivo en fragmentos.</translation>
    </message>
    <message>
        <source>Run-on:</source>
        <translation>Prolongación:</translation>
    </message>
    <message>
        <source>(no serial ports found)</source>
        <translation>(no se encontraron puertos serie)</translation>
    </message>
    <message>
        <source>(no port chosen)</source>
        <translation>(ningún puerto elegido)</translation>
    </message>
    <message>
        <source>CTS</source>
        <translation>CTS</translation>
    </message>
    <message>
        <source>DSR</source>
        <translation>DSR</translation>
    </message>
    <message>
        <source>DCD</source>
        <translation>DCD</translation>
    </message>
    <message>
        <source>Invert (record when open)</source>
        <translation>Invertir (grabar con el contacto abierto)</translation>
    </message>
    <message>
        <source>Serial port:</source>
        <translation>Puerto serie:</translation>
    </message>
    <message>
        <source>Baud:</source>
        <translation>Baudios:</translation>
    </message>
    <message>
        <source>Sense line:</source>
        <translation>Línea de detección:</translation>
    </message>
    <message>
        <source>Start command:</source>
        <translation>Comando de inicio:</translation>
    </message>
    <message>
        <source>Stop command:</source>
        <translation>Comando de parada:</translation>
    </message>
    <message>
        <source>(no MIDI inputs found)</source>
        <translation>(no se encontraron entradas MIDI)</translation>
    </message>
    <message>
        <source>any</source>
        <translation>cualquiera</translation>
    </message>
    <message>
        <source>MIDI input:</source>
        <translation>Entrada MIDI:</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>Canal:</translation>
    </message>
    <message>
        <source>Note / CC:</source>
        <translation>Nota / CC:</translation>
    </message>
    <message>
        <source>This build was compiled without Qt SerialPort support.</source>
        <translation>Esta versión se compiló sin compatibilidad con Qt SerialPort.</translation>
    </message>
</context>
<context>
    <name>UpdateChecker</name>
    <message>
        <source>The update URL is not valid.</source>
        <translation>La URL de actualización no es válida.</translation>
    </message>
    <message>
        <source>The update server returned HTTP %1.</source>
        <translation>El servidor de actualizaciones devolvió HTTP %1.</translation>
    </message>
    <message>
        <source>The update server sent a malformed response.</source>
        <translation>El servidor de actualizaciones envió una respuesta mal formada.</translation>
    </message>
    <message>
        <source>The update server did not report a version.</source>
        <translation>El servidor de actualizaciones no indicó ninguna versión.</translation>
    </message>
</context>
<context>
    <name>UpdateDialog</name>
    <message>
        <source>Update Available</source>
        <translation>Actualización disponible</translation>
    </message>
    <message>
        <source>&lt;h3 style=&apos;color:#c0392b&apos;&gt;Important update available&lt;/h3&gt;</source>
        <translation>&lt;h3 style=&apos;color:#c0392b&apos;&gt;Actualización importante disponible&lt;/h3&gt;</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Update available&lt;/h3&gt;</source>
        <translation>&lt;h3&gt;Actualización disponible&lt;/h3&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;&lt;b&gt;Version %1&lt;/b&gt; is available. You are running %2.&lt;/p&gt;</source>
        <translation>&lt;p&gt;La &lt;b&gt;versión %1&lt;/b&gt; está disponible. Usted utiliza la %2.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p style=&apos;color:gray&apos;&gt;Released %1&lt;/p&gt;</source>
        <translation>&lt;p style=&apos;color:gray&apos;&gt;Publicada: %1&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;a href=&quot;%1&quot;&gt;Full release notes&lt;/a&gt;</source>
        <translation>&lt;a href=&quot;%1&quot;&gt;Notas completas de la versión&lt;/a&gt;</translation>
    </message>
    <message>
        <source>&amp;Download...</source>
        <translation>&amp;Descargar...</translation>
    </message>
    <message>
        <source>&amp;Skip This Version</source>
        <translation>&amp;Omitir esta versión</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Más tarde</translation>
    </message>
</context>
<context>
    <name>UpdatePrompt</name>
    <message>
        <source>Skipping version %1</source>
        <translation>Se omite la versión %1</translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation>Buscar actualizaciones</translation>
    </message>
    <message>
        <source>You are running the latest version (%1).</source>
        <translation>Está utilizando la última versión (%1).</translation>
    </message>
    <message>
        <source>Could not check for updates.

%1</source>
        <translation>No se pudieron buscar actualizaciones.

%1</translation>
    </message>
</context>
<context>
    <name>VersionLabel</name>
    <message>
        <source>Version %1 - click to check for updates</source>
        <translation>Versión %1: haga clic para buscar actualizaciones</translation>
    </message>
    <message>
        <source>&lt;a href=&quot;update&quot; style=&quot;text-decoration:none; color:palette(link)&quot;&gt;v%1&lt;/a&gt;</source>
        <translation>&lt;a href=&quot;update&quot; style=&quot;text-decoration:none; color:palette(link)&quot;&gt;v%1&lt;/a&gt;</translation>
    </message>
</context>
<context>
    <name>VfdPanel</name>
    <message>
        <source>REC</source>
        <translation>REC</translation>
    </message>
    <message>
        <source>AUTO</source>
        <translation>AUTO</translation>
    </message>
    <message>
        <source>TRIG</source>
        <translation>TRIG</translation>
    </message>
    <message>
        <source>CLIP</source>
        <translation>CLIP</translation>
    </message>
    <message>
        <source>TODAY</source>
        <translation>HOY</translation>
    </message>
    <message>
        <source>ELAPSED</source>
        <translation>TRANSCURRIDO</translation>
    </message>
    <message>
        <source>PEAK LEVEL METER</source>
        <translation>NIVEL DE PICO</translation>
    </message>
    <message>
        <source>dBFS</source>
        <translation>dBFS</translation>
    </message>
    <message>
        <source>L</source>
        <translation>I</translation>
    </message>
    <message>
        <source>R</source>
        <translation>D</translation>
    </message>
    <message>
        <source>NO CODEC</source>
        <translation>SIN CÓDEC</translation>
    </message>
    <message>
        <source>DISK %1</source>
        <translation>DISCO %1</translation>
    </message>
    <message>
        <source>Recorder display</source>
        <translation>Panel de la grabadora</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Grabando</translation>
    </message>
    <message>
        <source>Not recording</source>
        <translation>Sin grabar</translation>
    </message>
    <message>
        <source>Automatic recording by the schedule is on</source>
        <translation>La grabación automática según el programador está activada</translation>
    </message>
    <message>
        <source>Automatic recording by the schedule is off</source>
        <translation>La grabación automática según el programador está desactivada</translation>
    </message>
    <message>
        <source>The external trigger is active</source>
        <translation>El disparo externo está activo</translation>
    </message>
    <message>
        <source>The external trigger is not active</source>
        <translation>El disparo externo no está activo</translation>
    </message>
    <message>
        <source>Lights up for two seconds when the input exceeds full scale</source>
        <translation>Se enciende durante dos segundos cuando la entrada supera el fondo de escala</translation>
    </message>
    <message>
        <source>Automatic mode</source>
        <translation>Modo automático</translation>
    </message>
    <message>
        <source>Trigger active</source>
        <translation>Disparo activo</translation>
    </message>
    <message>
        <source>Trigger not active</source>
        <translation>Disparo inactivo</translation>
    </message>
    <message>
        <source>Codec: %1</source>
        <translation>Códec: %1</translation>
    </message>
    <message>
        <source>Source: %1</source>
        <translation>Fuente: %1</translation>
    </message>
    <message>
        <source>Disk time left: %1</source>
        <translation>Tiempo restante en disco: %1</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Archivo: %1</translation>
    </message>
</context>
<context>
    <name>VorbisEncoder</name>
    <message>
        <source>This build was compiled without Ogg Vorbis support.</source>
        <translation>Esta versión se compiló sin compatibilidad con Ogg Vorbis.</translation>
    </message>
</context>
<context>
    <name>WasapiLoopbackWorker</name>
    <message>
        <source>Could not create the audio device enumerator (0x%1).</source>
        <translation>No se pudo crear el enumerador de dispositivos de audio (0x%1).</translation>
    </message>
    <message>
        <source>Could not activate the audio client (0x%1).</source>
        <translation>No se pudo activar el cliente de audio (0x%1).</translation>
    </message>
    <message>
        <source>Could not read the device mix format.</source>
        <translation>No se pudo leer el formato de mezcla del dispositivo.</translation>
    </message>
    <message>
        <source>Could not initialise loopback capture (0x%1).</source>
        <translation>No se pudo iniciar la captura en loopback (0x%1).</translation>
    </message>
    <message>
        <source>Could not obtain the capture service.</source>
        <translation>No se pudo obtener el servicio de captura.</translation>
    </message>
</context>
<context>
    <name>WebRequest</name>
    <message>
        <source>The web server answered with the status %1.</source>
        <translation>El servidor web respondió con el estado %1.</translation>
    </message>
    <message>
        <source>The web server did not answer in time.</source>
        <translation>El servidor web no respondió a tiempo.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Tidewell</source>
        <translation>Tidewell</translation>
    </message>
    <message>
        <source>Tidewell is already running.</source>
        <translation>Tidewell ya está en marcha.</translation>
    </message>
    <message>
        <source>Commands from the command line will not arrive: %1</source>
        <translation>Las órdenes de la línea de órdenes no llegarán: %1</translation>
    </message>
</context>
</TS>
